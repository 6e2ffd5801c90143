// SPDX-License-Identifier: MIT
// Where events are kept.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "Quorvell/agenda/Patience.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

struct [[nodiscard]] AgendaReading {
    std::vector<CalendarEvent> events; ///< In the order of their starts.
    std::vector<std::string> problems; ///< Sentences for the user about what could not be read.
    bool isWhole = true; ///< False where reading was broken off: then nobody can say when the user is free.
};

struct [[nodiscard]] AgendaVerdict {
    std::optional<CalendarEvent> event; ///< As it stands now, or stood before it was removed.
    std::string problem; ///< When it could not be done: a sentence that says what to do.
};

/// Every function may wait for a disk or another program, no longer than the patience that was given last; one thread.
class CalendarSource {
public:
    virtual ~CalendarSource() = default;

    /// For what is asked from now on. A change that has begun is carried through.
    void havePatience(Patience patience) { m_patience = std::move(patience); }

    virtual char letter() const = 0; ///< In the ids of its events.
    virtual bool isThere() = 0;
    /// What overlaps the stretch of time.
    virtual AgendaReading read(Instant from, Instant to, const Calendar& calendar) = 0;
    virtual AgendaVerdict add(const EventDraft& draft, const Calendar& calendar, Instant now) = 0;
    virtual AgendaVerdict change(
        const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now) = 0;
    virtual AgendaVerdict remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now) = 0;
    /// The event, or the occurrence that the id names.
    virtual AgendaVerdict find(const EventID& id, const Calendar& calendar) = 0;

protected:
    const Patience& patience() const { return m_patience; }

private:
    Patience m_patience;
};

} // namespace quorvell
