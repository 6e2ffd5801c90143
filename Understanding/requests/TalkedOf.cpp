// SPDX-License-Identifier: MIT
#include "Understanding/requests/TalkedOf.h"

#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/time/SpokenWhen.h"

namespace quorvell {

namespace {

constexpr int minutesOfDay = 24 * 60;

/// The day that the calendar was asked about, while nothing was done since.
bool isDayAsked(const RequestMemory& memory)
{
    constexpr std::size_t recently = 2; ///< Utterances; later a day that nobody names is today.
    const bool isRecent = memory.askedDay && memory.askedDayAt + recently >= memory.turn;
    return isRecent && (memory.acts.empty() || memory.acts.back().turn < memory.askedDayAt);
}

TalkedOf thing(TalkedOf::Kind kind, const FoundThing& found)
{
    if (found.id.empty() || !found.start)
        return {};
    return {.kind = kind, .title = found.title, .start = found.start, .repeats = found.repeats};
}

} // namespace

TalkedOf TalkedOf::of(const RequestMemory& memory)
{
    if (isDayAsked(memory))
        return {.kind = Kind::day, .start = memory.askedDay};
    if (memory.topic == AgendaCalls::skill && memory.asked == RequestMemory::CalendarQuestion::none)
        return thing(Kind::event, memory.event);
    if (memory.topic == ReminderCalls::skill)
        return thing(Kind::reminder, memory.reminder);
    if (memory.topic == AlarmCalls::skill && !memory.alarms.isTimer && memory.alarms.start && !memory.alarms.id.empty())
        return {.kind = Kind::alarm, .title = memory.alarms.title, .start = memory.alarms.start};
    return {};
}

std::string TalkedOf::day(int days) const
{
    if (!start)
        return {};
    constexpr int noon = 12 * 60; // So that no change of the clock moves the day.
    DateParts moment = start->wholeDay();
    moment.allDay = false;
    const DateParts that = moment.adding(noon + days * minutesOfDay).wholeDay();
    const std::string spoken = SpokenWhen::date(that);
    const std::size_t blank = spoken.find(' ');
    return blank == std::string::npos ? spoken : "on" + spoken.substr(blank);
}

std::string TalkedOf::hour() const
{
    return hasHour() ? "at " + SpokenWhen::clock(*start) : "";
}

} // namespace quorvell
