// SPDX-License-Identifier: MIT
#include "Understanding/time/TimeVocabulary.h"

#include "QuorvellCore/reminders/wording/WordSlips.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quorvell {

namespace {

/// Sorted. The plural needs no row of its own.
constexpr auto vocabulary = std::to_array<std::string_view>({"a", "after", "afternoon", "ahead", "am", "an", "and",
    "another", "apr", "april", "around", "arvo", "at", "aug", "august", "before", "beginning", "between", "boxing",
    "by", "christmas", "clock", "coming", "couple", "current", "daily", "day", "dec", "december", "each", "easter",
    "eight", "eighteen", "eighteenth", "eighth", "eleven", "eleventh", "end", "eod", "eve", "evening", "every", "extra",
    "feb", "february", "few", "fifteen", "fifteenth", "fifth", "fifty", "first", "five", "for", "fortnight", "forty",
    "four", "fourteen", "fourteenth", "fourth", "fri", "friday", "from", "full", "half", "halloween", "hour", "hr",
    "in", "ish", "jan", "january", "jul", "july", "jun", "june", "last", "m", "mar", "march", "may", "midday",
    "midnight", "min", "minute", "mon", "monday", "month", "monthly", "more", "morning", "my", "new", "next", "night",
    "nine", "nineteen", "nineteenth", "ninth", "noon", "nov", "november", "now", "nye", "o", "oclock", "oct", "october",
    "of", "oh", "on", "one", "onward", "onwards", "other", "our", "over", "p", "past", "pm", "quarter", "rest", "sat",
    "saturday", "second", "sep", "sept", "september", "seven", "seventeen", "seventeenth", "seventh", "sharp", "six",
    "sixteen", "sixteenth", "sixth", "start", "starting", "sun", "sunday", "ten", "tenth", "thanksgiving", "the",
    "third", "thirteen", "thirteenth", "thirtieth", "thirty", "this", "three", "through", "thru", "thu", "thur",
    "thurs", "thursday", "till", "time", "tmr", "tmrw", "to", "today", "tomorrow", "tonight", "tue", "tues", "tuesday",
    "twelfth", "twelve", "twentieth", "twenty", "two", "until", "upcoming", "valentine's", "wed", "wednesday", "week",
    "weekday", "weekend", "weekly", "whole", "within", "xmas", "year", "yearly", "years", "yesterday"});
static_assert(std::ranges::is_sorted(vocabulary));

bool isTimeWord(std::string_view word)
{
    // "5pm", "a.m", "half-past", and digits of other scripts.
    const bool isWritten = std::ranges::any_of(word, [](char letter) { return letter < 'a' || letter > 'z'; });
    if (isWritten || std::ranges::binary_search(vocabulary, word))
        return true;
    if (!WordSlips::day(word).empty() || !WordSlips::part(word).empty())
        return true;
    return word.ends_with('s') && std::ranges::binary_search(vocabulary, word.substr(0, word.size() - 1));
}

} // namespace

bool TimeVocabulary::mayBeTime(const RequestWords& words, std::size_t first, std::size_t end)
{
    for (std::size_t index = first; index < end; ++index) {
        if (!isTimeWord(words.at(index)))
            return false;
    }
    return true;
}

} // namespace quorvell
