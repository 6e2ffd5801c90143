// SPDX-License-Identifier: MIT
// The calendars of the desktop, as evolution-data-server keeps them for all programs.
#pragma once

#include "Quorvell/agenda/CalendarSource.h"
#include "Quorvell/agenda/IcsCalendar.h"
#include "Quorvell/desktop/DataServerCalendars.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Used where that runs. Blocks; one thread.
class EventsOfDataServer final : public CalendarSource {
public:
    char letter() const override { return 'd'; }
    bool isThere() override;
    AgendaReading read(Instant from, Instant to, const Calendar& calendar) override;
    AgendaVerdict add(const EventDraft& draft, const Calendar& calendar, Instant now) override;
    AgendaVerdict change(
        const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now) override;
    AgendaVerdict remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now) override;
    AgendaVerdict takeBack(const EventTrace& trace, const Calendar& calendar) override;
    AgendaVerdict find(const EventID& id, const Calendar& calendar) override;

private:
    /// In ids the uid names the calendar, too: "CALENDAR/UID".
    struct Place {
        std::string calendar;
        EventID id; ///< With the uid of the event alone.
    };

    static std::optional<Place> placeOf(const EventID& id);
    bool connect();
    void beginToWrite();
    /// What to say of an event that is not given.
    std::string missing() const;
    std::optional<IcsCalendar> whole(const Place& place);
    bool write(const Place& place, const std::string& text, const char* what);
    /// Hands over an event that the service does not have, part by part.
    bool create(const Place& place, const IcsCalendar& event, const Calendar& calendar);
    /// Of a change that was made a moment ago.
    EventTrace traceOf(const Place& place, const std::string& before);
    bool removeObject(const Place& place, const std::string& occurrence);
    bool store(const Place& place, const IcsCalendar& before, const IcsCalendar& after, const Calendar& calendar);
    struct Stretch {
        Instant from{};
        Instant to{};
    };
    /// Gives what is missing of the calendar, apart from one that does not answer.
    IcsOmissions readCalendar(const DataServerCalendars::Found& found, const Stretch& stretch, const Calendar& calendar,
        AgendaReading& reading);
    IcsOmissions readObjects(const DataServerCalendars::Found& found, const QStringList& objects,
        const Stretch& stretch, const Calendar& calendar, std::vector<CalendarEvent>& events);

    DataServerCalendars m_calendars;
};

} // namespace quorvell
