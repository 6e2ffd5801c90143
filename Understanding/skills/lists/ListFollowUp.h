// SPDX-License-Identifier: MIT
// What is said of a list without naming it.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ListFollowUp {
    /// What can only be about the list that is being talked of: "add butter", "how many are there", "delete it".
    /// `known` are the items that were told or changed: nothing else is ticked or taken off without its list.
    static std::optional<ListIntent> read(std::string_view core, const std::vector<std::string>& known);
    /// "We ran out of milk": it is to be bought.
    static std::optional<ListIntent> readLack(std::string_view core);
    /// "We need milk", "I bought the milk": it may be about a list.
    static std::optional<ListIntent> readStatement(std::string_view core);
};

} // namespace quorvell
