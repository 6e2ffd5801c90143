// SPDX-License-Identifier: MIT
// Replies to what was done with lists, in words.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/memory/ListTalk.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ListReply {
    static constexpr std::size_t mostTold = 12; ///< Items at once; the rest when it is asked for.

    /// "a, b and c".
    static std::string joined(const std::vector<std::string>& texts);
    /// "a, b or c".
    static std::string eitherOf(const std::vector<std::string>& texts);
    /// "3 things", "nothing".
    static std::string amount(std::size_t count);
    /// As the results of keep_note name it, behind "your".
    static std::string name(const ToolResult& result);
    static std::vector<std::string> texts(const ToolResult& result, std::string_view key);

    static std::string lists(const ToolResult& result);
    /// What is on each of several lists, as far as anybody would have it told at once.
    static std::string each(const ToolResult& result);
    /// On which lists that stands which was asked about.
    static std::string heldAnywhere(const ToolResult& result);
    /// "It" or "them".
    static std::string pronoun(const std::vector<std::string>& items);
    /// "Eggs are already on your grocery list."
    static std::string standing(const std::vector<std::string>& items, const std::string& where);
    /// What is on it; `talk` keeps what was told.
    static std::string list(const ToolResult& result, ListTalk& talk);
    /// Those behind the ones that were told.
    static std::string rest(ListTalk& talk);
    /// Whether what was asked about is on it.
    /// `asked` are the words in which it was; of a place, what is there is told.
    static std::string held(const ToolResult& result, const std::vector<std::string>& asked);
    static std::string count(const ToolResult& result);
    static std::string made(const ToolResult& result);
    /// `already` is what those are that needed no change: "ticked off".
    static std::string changed(const ToolResult& result, std::string_view already);
    static std::string notOnList(const ToolResult& result);
    /// Behind "I": "added milk to your shopping list". Empty where nothing was changed.
    static std::string done(const ToolResult& result);
};

} // namespace quorvell
