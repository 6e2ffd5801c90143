// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/FoundEvent.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/acting/AgendaTopic.h"
#include "Understanding/skills/calendar/reading/AgendaIntent.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderIntent.h"
#include "Understanding/skills/reminders/ReminderRules.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/words/RequestText.h"

#include <chrono>
#include <string>
#include <utility>

namespace quorvell {

namespace {

/// Long enough to get there, where nobody said how long before.
constexpr int usualLead = 30;

bool isStillToCome(const DateParts& moment, const LocalTime& around)
{
    return moment > DateParts::from(around.now, around.calendar);
}

/// How long it lasts, in minutes; 0 where that cannot be told.
int minutesOfEvent(const FoundThing& event, const LocalTime& around)
{
    const auto from = event.start && !event.start->allDay ? event.start->instant(around.calendar) : std::nullopt;
    const auto to = event.end && !event.end->allDay ? event.end->instant(around.calendar) : std::nullopt;
    return from && to ? static_cast<int>(std::chrono::duration_cast<std::chrono::minutes>(*to - *from).count()) : 0;
}

/// "Until 11": the end that is meant.
std::optional<DateParts> endNamed(const FoundThing& event, const std::string& clock, const LocalTime& around)
{
    constexpr int halfDay = 12 * 60;
    const SpokenMove to = SpokenMove::read("at " + clock, *event.start, SpokenMove::FarHour::isUsual, around);
    if (to.choices.size() != 1 || to.choices.front().allDay)
        return std::nullopt;
    DateParts end = to.choices.front();
    if (!(end > *event.start))
        end = end.adding(halfDay);
    return end > *event.start && end.wholeDay() == event.start->wholeDay() ? std::optional(end) : std::nullopt;
}

} // namespace

RuleStep FoundEvent::remind(
    const FoundThing& event, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    constexpr int nineInTheMorning = 9 * 60;
    DateParts start = event.start.value_or(DateParts());
    const bool isWholeDay = start.allDay;
    if (isWholeDay) {
        start.allDay = false;
        start = start.adding(nineInTheMorning);
    }
    const bool takesLead = search.isUsualLead && !isWholeDay && isStillToCome(start.adding(-usualLead), around);
    const DateParts when = start.adding(takesLead ? -usualLead : -search.minutes);
    AgendaTopic::talkAbout(event, memory);
    if (!isStillToCome(when, around))
        return {AgendaReply::named(event) + ". That is too late for a reminder "
                + (search.minutes > 0 ? "that long before it." : "of it."),
            std::move(memory)};
    if (search.rings) {
        memory.alarms = {};
        return {AlarmCalls{around}.setAlarmAt(event.title, when, ""), std::move(memory)};
    }
    const std::string& deed = search.value;
    memory.request =
        "remind me " + (deed.empty() ? "about " + event.title : "to " + deed); // For the words of the answer.
    if (takesLead)
        memory.remark =
            " That is half an hour before " + (deed.empty() ? "it" : event.title) + ", as you did not say how long.";
    else if (isWholeDay && search.isUsualLead)
        memory.remark = " It is all day, so I took 9 AM.";
    return {ReminderCalls{around}.setAt(deed.empty() ? event.title : RequestText::written(deed), when, ""),
        std::move(memory)};
}

std::optional<RuleStep> FoundEvent::remindAnyway(
    const EventSearch& search, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (!search.fallback.empty())
        return ReminderRules::request(ReminderIntent::of(search.fallback)).answer(memory, around);
    const bool namesHour = search.days && !search.days->from.allDay && search.minutes > 0;
    const std::string name = search.name.empty() ? search.noun : search.name;
    if (!namesHour || name.empty())
        return std::nullopt;
    const DateParts when = search.days->from.adding(-search.minutes);
    if (!isStillToCome(when, around))
        return std::nullopt;
    RequestMemory after = memory;
    const std::string& deed = search.value;
    after.request = "remind me " + (deed.empty() ? "about " + name : "to " + deed);
    after.remark = " It is not in your calendar.";
    return RuleStep{
        ReminderCalls{around}.setAt(RequestText::written(deed.empty() ? name : deed), when, ""), std::move(after)};
}

RuleStep FoundEvent::setLength(
    const FoundThing& event, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    if (!event.start || event.start->allDay)
        return {AgendaReply::named(event) + ", is all day. Tell me at what time it begins first.", std::move(memory)};
    const bool isOneTime = event.repeats && event.id.find('#') != std::string::npos;
    memory.wish.scope = isOneTime ? Wish::Scope::one : Wish::Scope::open;
    const int lasting = search.isRelative ? minutesOfEvent(event, around) + search.minutes : search.minutes;
    const auto end = search.value.empty() ? (lasting > 0 ? std::optional(event.start->adding(lasting)) : std::nullopt)
                                          : endNamed(event, search.value, around);
    if (!end)
        return {AgendaReply::named(event) + ". It cannot end " + (search.value.empty() ? "so early" : "then")
                + ", so I have changed nothing.",
            std::move(memory)};
    return {AgendaCalls{around}.describe(event.id, "end", end->text(), memory.wish.scope), std::move(memory)};
}

RuleStep FoundEvent::copy(
    const FoundThing& event, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern week("\\b(?:next|following|coming) week$", Pattern::caseless);
    constexpr int minutesOfWeek = 7 * 24 * 60;
    SpokenMove to;
    if (event.start && week.find(search.value))
        to.choices = {event.start->adding(minutesOfWeek)};
    else if (event.start)
        to = SpokenMove::read(search.value, *event.start, SpokenMove::FarHour::isUsual, around);
    if (to.choices.empty())
        return {AgendaReply::named(event) + ". Tell me on which day it should be once more.", std::move(memory)};
    const DateParts start = to.choices.front();
    if (start == *event.start)
        return {AgendaReply::named(event) + ". It is there already.", std::move(memory)};
    return {AgendaCalls{around}.add({.kind = AgendaIntent::Kind::add,
                .minutes = minutesOfEvent(event, around),
                .title = event.title,
                .start = start}),
        std::move(memory)};
}

} // namespace quorvell
