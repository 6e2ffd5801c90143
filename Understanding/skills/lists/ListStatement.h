// SPDX-License-Identifier: MIT
// What is said of things that may stand on a list, or should, where no list is named.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ListStatement {
    /// "We ran out of milk": it is to be bought.
    static std::optional<ListIntent> readLack(std::string_view core);
    /// "I already have eggs", "no need for milk": groceries that are not to be bought.
    static std::optional<ListIntent> readSpared(std::string_view core);
    /// "We need milk", "I bought the milk": it may be about a list.
    static std::optional<ListIntent> readStatement(std::string_view core);
    /// Whether it can be bought, as far as words tell: no time, no person, nothing to do.
    static bool isGoods(const std::string& words);
};

} // namespace quorvell
