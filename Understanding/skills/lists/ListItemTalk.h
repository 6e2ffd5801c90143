// SPDX-License-Identifier: MIT
// What is said of things that stand on a list that was talked of, whatever was talked of since.
#pragma once

#include "Understanding/dialogue/memory/ListTalk.h"
#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ListItemTalk {
    /// "Scratch the bananas", "I bought the flour", "I vacuumed the stairs", "the bathroom is done", where such a thing
    /// is known to be on the list. Verbs that other matters have, too, are left to them.
    static std::optional<ListIntent> read(std::string_view core, const ListTalk& talk);
    /// "Rename wash the car to wash both cars", "call gifts presents": a thing, or a list that was spoken of.
    static std::optional<ListIntent> readRenaming(std::string_view core, const ListTalk& talk);
    /// The thing instead of that of the last change: "no, I mean the coffee".
    static std::optional<std::string> readOther(std::string_view core);

    /// The items that have all these words, one behind the other.
    static std::vector<std::string> named(const std::vector<std::string>& items, std::string_view words);
};

} // namespace quorvell
