// SPDX-License-Identifier: MIT
// One element on the screen that can be acted on.
#pragma once

#include <string>

namespace quorvell {

struct AutomationCandidate {
    std::string id{}; ///< Within one observation; actions name elements by nothing else.
    std::string role{}; ///< As accessibility names it, such as "AXTextField".
    std::string label{}; ///< The visible or accessible name.
    std::string value{};
    bool enabled = false;
    bool focused = false;
    bool secure = false; ///< Holds a password or its like.

    bool operator==(const AutomationCandidate&) const = default;
};

} // namespace quorvell
