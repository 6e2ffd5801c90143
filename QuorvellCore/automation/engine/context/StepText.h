// SPDX-License-Identifier: MIT
// What the user is told of a step that no model worded.
#pragma once

#include "QuorvellCore/automation/actions/AutomationAction.h"

#include <string>

namespace quorvell {

/// Before it is done: I'll press "Save".
std::string stepAnnouncement(const AutomationAction& action, const AutomationObservation& observation);

} // namespace quorvell
