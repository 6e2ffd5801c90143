// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/DaySearch.h"

namespace quorvell {

using std::chrono::days;

std::optional<LocalDay> nextWeekday(LocalDay from, int weekday)
{
    for (int step = 1; step <= 7; ++step) {
        if (const LocalDay day = from + days(step); Calendar::weekday(day) == weekday)
            return day;
    }
    return std::nullopt;
}

LocalDay weekdayOfNextWeek(LocalDay from, int weekday)
{
    const auto daysAfterMonday = [](int day) { return days((day + 5) % 7); };
    const LocalDay monday = from - daysAfterMonday(Calendar::weekday(from));
    return monday + days(7) + daysAfterMonday(weekday);
}

std::optional<LocalDay> nextDate(int month, int day, LocalDay from)
{
    const auto thisYear = static_cast<int>(std::chrono::year_month_day(from).year());
    for (const int year : {thisYear, thisYear + 1}) {
        if (const auto found = Calendar::dayOf(year, month, day); found && *found >= from)
            return found;
    }
    return std::nullopt;
}

std::optional<LocalDay> nextDayOfMonth(LocalDay from, int day)
{
    const std::chrono::year_month_day start(from);
    for (int step = 0; step < 12; ++step) {
        const auto month = std::chrono::year_month(start.year(), start.month()) + std::chrono::months(step);
        const auto found = Calendar::dayOf(
            static_cast<int>(month.year()), static_cast<int>(static_cast<unsigned>(month.month())), day);
        if (found && *found >= from)
            return found;
    }
    return std::nullopt;
}

} // namespace quorvell
