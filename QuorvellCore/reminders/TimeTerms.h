// SPDX-License-Identifier: MIT
// What a single word of a request can have to do with time.
#pragma once

#include "QuorvellCore/reminders/RequestTokens.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct TimeTerms {
    /// 1 = Sunday to 7 = Saturday, by the whole name or a short form.
    static std::optional<int> weekday(std::string_view word);
    static bool isPluralWeekday(std::string_view word);
    /// "sun", "mon", "wed" and "sat" are words of their own, too.
    static bool isWordToo(std::string_view shortWeekday);
    /// 1 to 12: the name, a short form, or a long name with a slip in it. Never "marshmallows" or "decide".
    static std::optional<int> month(std::string_view word);
    /// "tomorow", "wensday", "thrusday": one slip away from the name of a day.
    static bool isAlmostDay(std::string_view word);
    static bool isRelativeDay(std::string_view word);
    static bool isPart(std::string_view word);
    /// "hours", "week", "month"; not "second", which is mostly something else.
    static bool isUnit(std::string_view word);
    /// 1 to 99 in words: "five", "twenty", and "a".
    static std::optional<int> number(std::string_view word);
    /// "first" to "thirtieth", without those of two words.
    static std::optional<int> ordinal(std::string_view word);

    /// "5pm", "5 pm", "noon": a time without a doubt. How many tokens it has, or 0.
    static int clockLength(const RequestTokens& tokens, int index);
    /// What stands beside a time: a part of one, or a word that leads to one.
    static bool isTimeLike(const RequestTokens& tokens, int index);
    /// A word of its own: no number, no mark, no part of a time, no preposition and no article.
    static bool isOrdinary(const RequestTokens& tokens, int index);
    /// "on", "by", "next": what makes a day of the word behind it.
    static bool governsDay(const RequestTokens& tokens, int index);
    static bool isDeterminer(const RequestTokens& tokens, int index);
};

} // namespace quorvell
