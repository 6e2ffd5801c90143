// SPDX-License-Identifier: MIT
// What is said to put things on a list that is named.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>

namespace quorvell {

struct ListAddition {
    /// "Add milk to my list", "put on my list: milk", "update my list with milk", "eggs to the shopping list". Nothing
    /// for other words.
    static std::optional<ListIntent> read(const std::string& text);
};

} // namespace quorvell
