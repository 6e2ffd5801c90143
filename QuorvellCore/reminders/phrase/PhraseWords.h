// SPDX-License-Identifier: MIT
// The word tables of reminder phrases, English and in lower case. Constants, so read from any thread.
#pragma once

#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace quorvell {

/// Parts of the day, each with its default hour.
enum class DayPart { morning, afternoon, evening, night };

struct PhraseWords {
    /// Sunday first: index plus one is the calendar's weekday number.
    static constexpr std::array<std::string_view, 7> weekdays = {
        "sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"};

    static constexpr std::array<std::string_view, 10> shortWeekdays = {
        "sun", "mon", "tue", "tues", "wed", "thu", "thur", "thurs", "fri", "sat"};

    /// Index plus one is the month number.
    static constexpr std::array<std::string_view, 12> months = {"january", "february", "march", "april", "may", "june",
        "july", "august", "september", "october", "november", "december"};

    /// Only the amounts that people say in reminders; anything else is given in digits. "half an" is a marker for
    /// thirty minutes, not a count.
    static constexpr std::array<std::pair<std::string_view, int>, 20> numberWords = {
        {{"a", 1}, {"an", 1}, {"one", 1}, {"two", 2}, {"three", 3}, {"four", 4}, {"five", 5}, {"six", 6}, {"seven", 7},
            {"eight", 8}, {"nine", 9}, {"ten", 10}, {"eleven", 11}, {"twelve", 12}, {"fifteen", 15}, {"twenty", 20},
            {"thirty", 30}, {"forty five", 45}, {"forty-five", 45}, {"half an", 0}}};

    static constexpr int defaultHour = 9; ///< Of a day named without any time.

    /// 1 = Sunday to 7 = Saturday, by a whole weekday's name or its short form.
    static std::optional<int> weekday(std::string_view word);
    /// 1 to 12, by the first three letters.
    static std::optional<int> month(std::string_view word);
    /// Digits or one of `numberWords`.
    static std::optional<int> amount(std::string_view word);
    static std::optional<DayPart> part(std::string_view word);
    static int hour(DayPart part);
};

} // namespace quorvell
