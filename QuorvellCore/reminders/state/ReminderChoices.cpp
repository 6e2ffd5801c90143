// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/state/ReminderChoices.h"

#include "QuorvellCore/reminders/calendar/ReminderWords.h"

namespace quorvell {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;

std::vector<ReminderChoice> ReminderChoices::later(Instant now, const Calendar& calendar, const std::string& locale)
{
    constexpr hours eveningHour{18};
    constexpr hours morningHour{9};
    constexpr minutes farEnough{90}; ///< A nearer evening would say the same as "In an hour".

    std::vector<ReminderChoice> choices;
    const auto offer = [&](const char* title, Instant date) {
        choices.push_back({title, ReminderWords::short_(date, now, calendar, locale), date});
    };
    offer("In 10 minutes", now + minutes(10));
    offer("In an hour", now + hours(1));
    const Instant evening = calendar.instant(calendar.day(now), eveningHour);
    if (evening > now + farEnough)
        offer("This evening", evening);
    offer("Tomorrow morning", calendar.instant(calendar.day(calendar.addingDays(now, days(1))), morningHour));
    return choices;
}

} // namespace quorvell
