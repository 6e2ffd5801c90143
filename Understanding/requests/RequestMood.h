// SPDX-License-Identifier: MIT
// How a line is meant: as a wish, or as one that only speaks of what could be wished.
#pragma once

#include <string_view>

namespace quorvell {

enum class RequestMood {
    wish, ///< Or a statement, or an answer.
    question, ///< It wants to know: "did I put lunch in my calendar". Politeness is none: "could you put ...?"
    musing, ///< It tells of a wish that nobody has now: "I forgot to put lunch in my calendar".
    denial, ///< "Don't put lunch in my calendar."
};

/// `words` as they were said, with opening and closing words and their signs. Where both are possible it is no wish:
/// a question too many is better than a change that nobody asked for.
RequestMood moodOf(std::string_view words);
/// Whether they begin by saying no to something, whatever that is: "do not get any milk". Not "do not forget the milk".
bool saysNo(std::string_view words);

} // namespace quorvell
