// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/state/ReminderChoices.h"

#include "QuorvellCore/reminders/calendar/ReminderWords.h"

namespace quorvell {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;

std::vector<ReminderChoice> ReminderChoices::later(Instant now, const Calendar& calendar, const std::string& locale)
{
    using Kind = ReminderChoice::Kind;
    constexpr hours eveningHour{18};
    constexpr hours morningHour{9};
    constexpr minutes farEnough{90}; ///< A nearer evening would say the same as "In an hour".

    std::vector<ReminderChoice> choices;
    const auto offer = [&](ReminderChoice::Kind kind, const char* title, Instant date) {
        choices.push_back({kind, title, ReminderWords::short_(date, now, calendar, locale), date});
    };
    offer(Kind::inTenMinutes, "In 10 minutes", now + minutes(10));
    offer(Kind::inAnHour, "In an hour", now + hours(1));
    const Instant evening = calendar.instant(calendar.day(now), eveningHour);
    if (evening > now + farEnough)
        offer(Kind::thisEvening, "This evening", evening);
    offer(Kind::tomorrowMorning, "Tomorrow morning",
        calendar.instant(calendar.day(calendar.addingDays(now, days(1))), morningHour));
    return choices;
}

} // namespace quorvell
