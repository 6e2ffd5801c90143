// SPDX-License-Identifier: MIT
// What a goal says, so that two goals are the same only where the user asked for the same.
//
// Normalised text is too coarse to act by: "open the C++ page" and "open the C page" are the same to it, and so are -5
// and 5. Words are compared as they are written, without the punctuation of sentences at their ends.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct GoalWords {
    /// In lower case, one space between words, each without . , ! ? ; : … quotes and brackets at its ends.
    static std::string of(std::string_view goal);

    /// Whether the text stands in the goal as whole words, letter by letter: what is typed for a goal that names it.
    static bool names(std::string_view goal, std::string_view text);
};

} // namespace quorvell
