// SPDX-License-Identifier: MIT
// How a step that was taken is written into the history of its task.
#pragma once

#include "QuorvellCore/automation/actions/AutomationAction.h"
#include "QuorvellCore/automation/decisions/AutomationHistory.h"

#include <optional>

namespace quorvell {

/// `before` is the screen on which the action was chosen. An element is called by its label, else its role; a scroll by
/// its direction too; a key, a menu item, an application or an address by itself. What was typed is not kept.
AutomationHistory stepTaken(const AutomationAction& action, const AutomationObservation& before, bool verified);

/// The same with the element's name instead of its id, for whoever has no screen.
AutomationHistory stepTaken(const AutomationAction& action, const std::string& element, bool verified);

} // namespace quorvell
