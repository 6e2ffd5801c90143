// SPDX-License-Identifier: MIT
// Events and reminders of a day as the agenda's tools and programs tell them, as JSON.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "Quorvell/agenda/FreeTime.h"
#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Json.h"

#include <string>
#include <vector>

namespace quorvell {

/// Words as the user's clock and language have them at one moment.
class EventAnswers {
public:
    static constexpr std::size_t mostItems = 100;

    EventAnswers(Instant now, Calendar calendar)
        : m_now(now)
        , m_calendar(std::move(calendar))
    {
    }

    /// "id", "title", "start", "end", "when" and what else is known.
    Json event(const CalendarEvent& event) const;
    Json slot(const FreeTime& free) const;

    /// Events and the pending reminders of that stretch in the order of their times; what is overdue counts as now.
    ToolResult agenda(
        const std::vector<CalendarEvent>& events, const std::vector<Note>& notes, Instant from, Instant to) const;

    /// Those that take time while this one does.
    Json conflicts(const CalendarEvent& event, const std::vector<CalendarEvent>& others) const;

    /// The pending reminders that fire while an event with a time lasts.
    Json remindersDuring(const CalendarEvent& event, const std::vector<Note>& notes) const;

    std::string when(const CalendarEvent& event) const;

private:
    std::string date(Instant moment, bool allDay) const;
    std::string day(Instant moment) const; ///< "Monday 23 November"
    Json reminder(const Note& note) const;

    Instant m_now;
    Calendar m_calendar;
};

} // namespace quorvell
