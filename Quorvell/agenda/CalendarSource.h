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

/// What a change did to one event, by which its source takes the change back. Its texts are for that source alone.
struct EventTrace {
    EventID id{}; ///< The event as a whole: a series with what was changed of single times.
    std::string place{}; ///< Where the source keeps it.
    std::string before{}; ///< Without the event where the change made it.
    std::string after{}; ///< Without it where the change removed it.
};

struct [[nodiscard]] AgendaVerdict {
    std::optional<CalendarEvent> event{}; ///< As it stands now, or stood before it was removed.
    std::string problem{}; ///< When it could not be done: a sentence that says what to do.
    std::optional<EventTrace> trace{}; ///< Of what was changed, where it can be taken back.
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
    /// Makes the event what it was before that change, in all that its source keeps of it. What was changed since by
    /// other hands stays, and is told.
    virtual AgendaVerdict takeBack(const EventTrace& trace, const Calendar& calendar) = 0;
    /// The event, or the occurrence that the id names.
    virtual AgendaVerdict find(const EventID& id, const Calendar& calendar) = 0;

protected:
    static constexpr const char* changedSince = "That event was changed since then, or is gone, so I left it as it is.";

    const Patience& patience() const { return m_patience; }

private:
    Patience m_patience;
};

} // namespace quorvell
