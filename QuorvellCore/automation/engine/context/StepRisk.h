// SPDX-License-Identifier: MIT
// What the guard says to a step that a rule or a known way would take by itself.
#pragma once

#include "QuorvellCore/automation/actions/AutomationAction.h"
#include "QuorvellCore/safety/ActionRisk.h"

namespace quorvell {

/// By what the guard knows of the action and of its element alone. It keeps a decider from choosing again and again
/// what is refused; whether the step may run is judged by whoever runs it, with more at hand.
ActionRisk stepRisk(const AutomationAction& action, const AutomationObservation& observation);

} // namespace quorvell
