// SPDX-License-Identifier: MIT
// The days that words such as "friday", "march 5" and "the 31st" mean, seen from a day.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>

namespace quorvell {

/// The first such weekday after `from`, one to seven days on. `weekday` is 1 = Sunday to 7 = Saturday.
std::optional<LocalDay> nextWeekday(LocalDay from, int weekday);

/// The weekday of the week after that of `from`. Weeks start on Monday.
LocalDay weekdayOfNextWeek(LocalDay from, int weekday);

/// That date in the year of `from`, or in the next where it has gone by. Nothing when neither year has it.
std::optional<LocalDay> nextDate(int month, int day, LocalDay from);

/// That day of the month of `from` or of one of the eleven after it, the first that exists and has not gone by.
std::optional<LocalDay> nextDayOfMonth(LocalDay from, int day);

} // namespace quorvell
