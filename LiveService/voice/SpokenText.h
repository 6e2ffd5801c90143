// SPDX-License-Identifier: MIT
// Cuts a reply into the pieces that are voiced and shown together. Pure.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct SpokenText {
    static constexpr std::size_t longestSentence = 240; ///< Bytes; a longer one is cut at a space.
    static constexpr int wordsInGroup = 3;

    /// The sentences without the white space around them. "5 p.m.", "3.5" and "Mr. Jones" are not cut.
    static std::vector<std::string> sentences(std::string_view text);

    /// A sentence in groups of a few words, whose texts put together give it back.
    static std::vector<std::string> groups(std::string_view sentence);

    /// What the voice is to say for a sentence as shown: without the signs of Markdown, and times after noon by the
    /// twelve-hour clock, which voices read more clearly.
    static std::string voiced(std::string_view sentence);
};

} // namespace quorvell
