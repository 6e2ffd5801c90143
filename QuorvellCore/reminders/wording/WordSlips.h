// SPDX-License-Identifier: MIT
// What a word with a slip of the finger in it was to be, where it was to be a word of time.
#pragma once

#include <string_view>

namespace quorvell {

/// Each takes a word in lower case that no row of the table knows, and gives the word that was meant; empty for none.
/// Whether a time can stand there at all is for the reader to see.
struct WordSlips {
    /// "wensday", "tommorow", "frday".
    static std::string_view day(std::string_view word);
    /// "setember", "apirl"; one whose first three letters are right is read anyway.
    static std::string_view month(std::string_view word);
    /// "mornning", "evning".
    static std::string_view part(std::string_view word);
    /// "mintues", "horus".
    static std::string_view unit(std::string_view word);
};

/// Letters changed, left out, added, or swapped with their neighbour, until one word is the other. `name` has at most
/// nine letters.
bool isWordAlmost(std::string_view word, std::string_view name, std::size_t mostSlips);

} // namespace quorvell
