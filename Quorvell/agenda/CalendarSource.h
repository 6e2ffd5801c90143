// SPDX-License-Identifier: MIT
// Where events are kept.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct [[nodiscard]] AgendaReading {
    std::vector<CalendarEvent> events; ///< In the order of their starts.
    std::vector<std::string> problems; ///< Sentences for the user about what could not be read.
};

struct [[nodiscard]] AgendaVerdict {
    std::optional<CalendarEvent> event; ///< As it stands now, or stood before it was removed.
    std::string problem; ///< When it could not be done: a sentence that says what to do.
};

/// Every function may wait for a disk or another program, at most some seconds; one thread.
class CalendarSource {
public:
    virtual ~CalendarSource() = default;

    virtual char letter() const = 0; ///< In the ids of its events.
    virtual bool isThere() = 0;
    /// What overlaps the stretch of time.
    virtual AgendaReading read(Instant from, Instant to, const Calendar& calendar) = 0;
    virtual AgendaVerdict add(const EventDraft& draft, const Calendar& calendar, Instant now) = 0;
    virtual AgendaVerdict change(
        const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now) = 0;
    virtual AgendaVerdict remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now) = 0;
    /// The event, or the occurrence that the id names.
    virtual std::optional<CalendarEvent> find(const EventID& id, const Calendar& calendar) = 0;
};

} // namespace quorvell
