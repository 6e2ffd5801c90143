// SPDX-License-Identifier: MIT
// What a word of a request has to do with time, seen with its neighbours.
#pragma once

#include "QuorvellCore/reminders/wording/RequestTokens.h"

namespace quorvell {

struct TimeTerms {
    /// "5pm", "5 pm", "noon": a time without a doubt. How many tokens it has, or 0.
    static int clockLength(const RequestTokens& tokens, int index);
    /// What stands beside a time: a part of one, or a word that leads to one.
    static bool isTimeLike(const RequestTokens& tokens, int index);
    /// A word of its own: no number, no mark, no part of a time, no preposition and no article.
    static bool isOrdinary(const RequestTokens& tokens, int index);
};

} // namespace quorvell
