// SPDX-License-Identifier: MIT
// What is said to change more than one thing of a list, or more than one list, in one breath.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>

namespace quorvell {

struct ListShift {
    /// "Move milk from shopping to groceries", "remove milk and add cheese", "remove all but eggs from my list".
    static std::optional<ListIntent> read(const std::string& text);
};

} // namespace quorvell
