// SPDX-License-Identifier: MIT
// One step that was already taken in a task.
#pragma once

#include <string>

namespace quorvell {

struct AutomationHistory {
    std::string operation{}; ///< The tool.
    std::string target{}; ///< What it was done to.
    bool verified = false; ///< Its postcondition held afterwards.

    bool operator==(const AutomationHistory&) const = default;
};

} // namespace quorvell
