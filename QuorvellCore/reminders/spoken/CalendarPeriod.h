// SPDX-License-Identifier: MIT
// A month or a year that a request names: "may", "may 2028", "next month", "the year".
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include <optional>

namespace quorvell {

struct CalendarPeriod {
    static constexpr int monthsOfYear = 12;

    std::chrono::year_month month{}; ///< The first one.
    int months = 1; ///< 12 for a year.
    int monthsToNext = 0; ///< To the one that is meant where this one is over; 0 where the words leave no choice.
    int end = 0; ///< The token behind it.

    static std::optional<CalendarPeriod> at(const RequestTokens& tokens, int index, LocalDay today);

    LocalDay firstDay() const;
    LocalDay lastDay() const;
    CalendarPeriod next() const;
    /// That day some months on; the last of a month that is shorter.
    static LocalDay adding(LocalDay day, int months);
    static std::chrono::year_month of(LocalDay day);
};

} // namespace quorvell
