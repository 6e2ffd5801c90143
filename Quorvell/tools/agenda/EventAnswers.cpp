// SPDX-License-Identifier: MIT
#include "Quorvell/tools/agenda/EventAnswers.h"

#include "Quorvell/reminding/AlarmMark.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/calendar/LocaleWords.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "QuorvellCore/reminders/state/ReminderTrigger.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t mostNamed = 5; ///< Of what stands in an event's way.

/// Of whole days the last one, for the end of the event is where the next day begins.
Instant lastMoment(const CalendarEvent& event)
{
    return event.allDay ? event.end - std::chrono::hours(12) : event.end;
}

bool hasTime(const Note& note)
{
    return ReminderState::isPending(note) && note.remindAt && note.trigger != storedText(ReminderTrigger::backAtMac);
}

} // namespace

std::string EventAnswers::date(Instant moment, bool allDay) const
{
    return (allDay ? DateParts::fromDay(moment, m_calendar) : DateParts::from(moment, m_calendar)).text();
}

std::string EventAnswers::day(Instant moment) const
{
    return formatted(moment, "EEEE d MMMM", m_calendar, m_calendar.locale());
}

std::string EventAnswers::when(const CalendarEvent& event) const
{
    if (!event.allDay)
        return ReminderWords::spoken(event.start, m_now, m_calendar, m_calendar.locale());
    const Instant last = lastMoment(event);
    return day(event.start) + (m_calendar.isSameDay(event.start, last) ? "" : " to " + day(last));
}

Json EventAnswers::event(const CalendarEvent& event) const
{
    Json entry = {{"id", event.id.text()}, {"title", event.title}, {"start", date(event.start, event.allDay)},
        {"end", date(lastMoment(event), event.allDay)}, {"when", when(event)}};
    if (!event.place.empty())
        entry["place"] = event.place;
    if (event.allDay)
        entry["all_day"] = true;
    if (event.repeats)
        entry["repeats"] = true;
    return entry;
}

Json EventAnswers::slot(const FreeTime& free) const
{
    const auto clock = [&](Instant moment) { return ReminderWords::clock(moment, m_calendar, m_calendar.locale()); };
    return {{"start", date(free.start, false)}, {"end", date(free.end, false)},
        {"when", day(free.start) + " from " + clock(free.start) + " to " + clock(free.end)}};
}

Json EventAnswers::reminder(const Note& note) const
{
    Json entry = {{"kind", AlarmMark::of(note) ? "alarm" : "reminder"}, {"id", note.id}, {"title", note.title},
        {"start", date(*note.remindAt, false)},
        {"when", ReminderWords::spoken(*note.remindAt, m_now, m_calendar, m_calendar.locale())}};
    if (note.repeatRule)
        entry["repeats"] = true;
    if (ReminderState::isDue(note, m_now))
        entry["overdue"] = true;
    if (isUntrusted(note.origin))
        entry["untrusted"] = true;
    return entry;
}

ToolResult EventAnswers::agenda(
    const std::vector<CalendarEvent>& events, const std::vector<Note>& notes, Instant from, Instant to) const
{
    std::vector<std::pair<Instant, Json>> items;
    for (const CalendarEvent& one : events) {
        Json entry = {{"kind", "event"}};
        entry.update(event(one));
        items.emplace_back(one.start, std::move(entry));
    }
    const bool hasNow = from <= m_now && m_now < to;
    for (const Note& note : notes) {
        if (!hasTime(note))
            continue;
        const bool isWithin = *note.remindAt >= from && *note.remindAt < to;
        if (isWithin || (hasNow && ReminderState::isDue(note, m_now)))
            items.emplace_back(*note.remindAt, reminder(note));
    }
    std::stable_sort(
        items.begin(), items.end(), [](const auto& left, const auto& right) { return left.first < right.first; });
    Json shown = Json::array();
    for (auto& [moment, entry] : items)
        if (shown.size() < mostItems)
            shown.push_back(std::move(entry));
    return ToolResult(ToolStatus::agenda).add("count", items.size()).add("items", std::move(shown));
}

Json EventAnswers::remindersDuring(const CalendarEvent& event, const std::vector<Note>& notes) const
{
    Json found = Json::array();
    for (const Note& note : notes) {
        const bool isMeanwhile =
            hasTime(note) && !AlarmMark::of(note) && *note.remindAt >= event.start && *note.remindAt < event.end;
        if (isMeanwhile && !event.allDay && found.size() < mostNamed)
            found.push_back(reminder(note));
    }
    return found;
}

Json EventAnswers::conflicts(const CalendarEvent& subject, const std::vector<CalendarEvent>& others) const
{
    Json found = Json::array();
    for (const CalendarEvent& other : others) {
        const bool isAnother = other.id.uid != subject.id.uid || other.id.calendar != subject.id.calendar;
        const bool overlaps = other.start < subject.end && other.end > subject.start;
        if (isAnother && overlaps && other.isBusy && !other.allDay && !subject.allDay && found.size() < mostNamed)
            found.push_back(event(other));
    }
    return found;
}

} // namespace quorvell
