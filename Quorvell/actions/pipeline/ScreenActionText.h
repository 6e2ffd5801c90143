// SPDX-License-Identifier: MIT
// Any action on the screen in a few words, the same whenever the same thing is done.
#pragma once

#include "QuorvellCore/automation/screen/AutomationObservation.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"

#include <string>

namespace quorvell {

/// As actionText, for those too that only a model's own tools have: "choose_option Country: France",
/// "click_at_spot 500, 20".
std::string screenActionText(const ScreenAction& action, const AutomationObservation& observation);

} // namespace quorvell
