// SPDX-License-Identifier: MIT
// How a zone's clocks change every year, as the time zone database writes it ("CET-1CEST,M3.5.0,M10.5.0/3").
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quorvell {

struct ZoneRule {
    /// The last or the nth weekday of a month, or a day of the year.
    struct Day {
        enum class Form { weekdayOfMonth, dayWithoutLeapDay, dayOfYear };
        Form form = Form::weekdayOfMonth;
        int month = 1; ///< 1 to 12.
        int week = 1; ///< 1 to 5, of which 5 is the last.
        int number = 0; ///< The weekday, 0 = Sunday; else the day: from 1 without the leap day, from 0 with it.
        std::int32_t time = 2 * 3600; ///< Seconds after that day's midnight, by the clock before the change.
    };

    std::int32_t standard = 0; ///< Seconds ahead of UTC.
    std::int32_t saving = 0; ///< The same while the clocks are changed. Of no meaning without `start`.
    std::optional<Day> start; ///< Absent when the clocks never change.
    Day end;

    /// Nothing for any other text.
    static std::optional<ZoneRule> parse(std::string_view text);

    /// Seconds since 1970 of midnight and `time` on that day, as if the clock showed UTC.
    static std::int64_t momentOf(const Day& day, int year);
};

} // namespace quorvell
