// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/EventRepeat.h"

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/TimeVocabulary.h"

namespace quorvell {

std::string EventRepeat::stored(const std::string& plain, const DateParts& start, const LocalTime& around)
{
    static const Pattern weekdays("\\b(?:weekdays?|working days?|workdays?|monday to friday)\\b");
    static const Pattern daily("\\b(?:daily|days?|mornings?|evenings?|nights?)\\b");
    static const Pattern weekly("\\b(?:weekly|weeks?)\\b|" + std::string(TimeVocabulary::weekday));
    static const Pattern monthly("\\b(?:monthly|months?)\\b");
    static const Pattern yearly("\\b(?:yearly|annually|annual|years?)\\b");
    static const Pattern other("\\b(?:other|second|third|two|2|three|3|fortnight\\w*|twice)\\b");
    const auto instant = start.instant(around.calendar);
    if (other.find(plain) || !instant)
        return {};
    if (weekdays.find(plain))
        return ReminderRepeat{ReminderRepeat::Kind::weekdays, {}, 0}.stored();
    if (yearly.find(plain))
        return ReminderRepeat{ReminderRepeat::Kind::yearly, {}, 0}.stored();
    if (monthly.find(plain))
        return ReminderRepeat{ReminderRepeat::Kind::monthly, {}, start.day}.stored();
    if (weekly.find(plain))
        return ReminderRepeat{ReminderRepeat::Kind::weekly, {around.calendar.parts(*instant).weekday}, 0}.stored();
    return daily.find(plain) ? ReminderRepeat{ReminderRepeat::Kind::daily, {}, 0}.stored() : std::string();
}

DateParts EventRepeat::firstFrom(const DateParts& start, const std::string& stored, const LocalTime& around)
{
    const auto rule = ReminderRepeat::fromStored(stored);
    const auto instant = rule ? start.instant(around.calendar) : std::nullopt;
    if (!instant)
        return start;
    const Instant first = rule->first(*instant, around.calendar);
    return start.allDay ? DateParts::fromDay(first, around.calendar) : DateParts::from(first, around.calendar);
}

} // namespace quorvell
