#pragma once

#include "Quorvell/agenda/CalendarSource.h"
#include "Quorvell/agenda/IcsCalendar.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// The calendars of the desktop, as evolution-data-server keeps them for all programs. Used where that runs; it is
/// never started from here. Blocks, every question for two seconds at most; one thread, which is where it has to be
/// made use of first: its connection to the session bus belongs to that thread.
class EventsOfDataServer final : public CalendarSource {
public:
    static constexpr std::size_t mostCalendars = 32;

    ~EventsOfDataServer() override;

    char letter() const override { return 'd'; }
    bool isThere() override;
    AgendaReading read(Instant from, Instant to, const Calendar& calendar) override;
    AgendaVerdict add(const EventDraft& draft, const Calendar& calendar, Instant now) override;
    AgendaVerdict change(
        const EventID& id, EventScope scope, const EventChange& change, const Calendar& calendar, Instant now) override;
    AgendaVerdict remove(const EventID& id, EventScope scope, const Calendar& calendar, Instant now) override;
    std::optional<CalendarEvent> find(const EventID& id, const Calendar& calendar) override;

private:
    struct Opened {
        QString service;
        QString path; ///< Lives as long as the connection.
    };
    /// In ids the uid names the calendar, too: "CALENDAR/UID".
    struct Place {
        std::string calendar;
        EventID id; ///< With the uid of the event alone.
    };
    struct Found {
        std::string uid;
        std::string name;
    };

    bool connect();
    std::vector<Found> calendars();
    std::optional<Opened> open(const std::string& calendar);
    /// The answer, or nothing and the reason in `m_problem`.
    std::optional<QVariantList> ask(const QDBusMessage& call);
    std::optional<QVariantList> askCalendar(
        const std::string& calendar, const char* method, const QVariantList& arguments);
    static std::optional<Place> placeOf(const EventID& id);
    std::optional<IcsCalendar> series(const Place& place);
    void readCalendar(const Found& found, Instant from, Instant to, const Calendar& calendar, AgendaReading& reading);

    std::optional<QDBusConnection> m_bus;
    QString m_connectionName;
    std::map<std::string, Opened> m_opened;
    std::string m_problem;
};

} // namespace quorvell
