// SPDX-License-Identifier: MIT
// Finds what an action is done to on a later look at the screen, whose elements have other numbers.
#pragma once

#include "QuorvellCore/automation/surface/ScreenAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <string>
#include <variant>

namespace quorvell {

/// The same action for the look `now`, or a sentence for the model why there is none. On a screen that shows just the
/// same an element is found by its place; else by its role and name, of which there must be exactly one in the same
/// application. What is done to whatever is in front (keys, menus, places) needs the same window, and the same element
/// in focus or at the place.
std::variant<ScreenAction, std::string> foundAgain(
    const ScreenAction& action, const ScreenLook& before, const ScreenLook& now);

/// The element that it names by its id, if it names one.
const std::string* targetOf(const ScreenAction& action);
/// Whether what it does depends on what is in front, beyond an element that it names.
bool dependsOnFront(const ScreenAction& action);

} // namespace quorvell
