// SPDX-License-Identifier: MIT
// What an action is done to, in words: the element, or the key, the menu, the application, the address.
#pragma once

#include "QuorvellCore/automation/actions/AutomationAction.h"

#include <string>

namespace quorvell {

/// `element` is how the element of its target is called; empty where it has none. Text that is typed is not told.
std::string actionObject(const AutomationAction& action, const std::string& element);

} // namespace quorvell
