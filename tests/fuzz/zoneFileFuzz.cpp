// SPDX-License-Identifier: MIT
// Any bytes are either no zone or one whose clock goes from a time of day to an instant and back.
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "fuzzing.h"

void quorvell::search(std::string_view text)
{
    const auto calendar = Calendar::create("Zone/Of/Bytes", "en_US", text);
    if (!calendar)
        return;
    for (const int year : {1900, 1970, 2026, 2399, 9998}) {
        const auto day = Calendar::dayOf(year, 3, 29);
        const Instant instant = calendar->instant(*day, std::chrono::hours(12));
        const auto distance = calendar->day(instant) - *day;
        require(distance <= std::chrono::days(2) && distance >= std::chrono::days(-2));
    }
}
