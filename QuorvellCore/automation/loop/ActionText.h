// SPDX-License-Identifier: MIT
// An action in a few words, the same whenever the same thing is done: what the loop guard compares and tells.
#pragma once

#include "QuorvellCore/automation/actions/AutomationAction.h"

#include <string>

namespace quorvell {

/// The tool's name, a space and what it is done with: "press_key return", "scroll down", "click Save". An element is
/// called by its label, else its role, since scans number the same ones differently; the second and later ones of the
/// same name get their number: "click Open (3)".
std::string actionText(const AutomationAction& action, const AutomationObservation& observation);

} // namespace quorvell
