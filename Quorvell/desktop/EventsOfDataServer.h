// SPDX-License-Identifier: MIT
// The calendars of the desktop, as evolution-data-server keeps them for all programs.
#pragma once

#include "Quorvell/agenda/CalendarSource.h"
#include "Quorvell/agenda/IcsCalendar.h"
#include "Quorvell/desktop/DataServerCalendars.h"

#include <optional>
#include <string>

namespace quorvell {

/// Used where that runs. Blocks; one thread.
class EventsOfDataServer final : public CalendarSource {
public:
    char letter() const override { return 'd'; }
    bool isThere() override { return m_calendars.isThere(); }
    AgendaReading read(Instant from, Instant to, const Calendar& calendar) override;
    AgendaVerdict add(const EventDraft& draft, const Calendar& calendar, Instant now) override;
    AgendaVerdict change(
        const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now) override;
    AgendaVerdict remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now) override;
    std::optional<CalendarEvent> find(const EventID& id, const Calendar& calendar) override;

private:
    /// In ids the uid names the calendar, too: "CALENDAR/UID".
    struct Place {
        std::string calendar;
        EventID id; ///< With the uid of the event alone.
    };

    static std::optional<Place> placeOf(const EventID& id);
    std::optional<IcsCalendar> whole(const Place& place);
    bool write(const Place& place, const std::string& text, const char* what);
    bool removeObject(const Place& place, const std::string& occurrence);
    bool store(const Place& place, const IcsCalendar& before, const IcsCalendar& after, const Calendar& calendar);
    void readCalendar(const DataServerCalendars::Found& found, Instant from, Instant to, const Calendar& calendar,
        AgendaReading& reading);

    DataServerCalendars m_calendars;
};

} // namespace quorvell
