// SPDX-License-Identifier: MIT
// The calendars that evolution-data-server keeps, asked over the session bus.
#pragma once

#include "Quorvell/agenda/Patience.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

/// It is never started from here. Blocks, every question for two seconds at most, all of them for no longer than the
/// patience that is given; one thread, which is where it has to
/// be made use of first: its connection to the session bus belongs to that thread.
class DataServerCalendars {
public:
    static constexpr std::size_t mostCalendars = 32;

    struct Found {
        std::string uid;
        std::string name;
    };

    DataServerCalendars() = default;
    ~DataServerCalendars();
    DataServerCalendars(const DataServerCalendars&) = delete;
    DataServerCalendars& operator=(const DataServerCalendars&) = delete;

    void havePatience(Patience patience) { m_patience = std::move(patience); }
    bool connect();
    bool isThere();
    /// Those that are switched on and shown.
    std::vector<Found> found();
    /// A method of one calendar: its answer, or nothing and the reason in `problem`.
    std::optional<QVariantList> ask(const std::string& calendar, const char* method, const QVariantList& arguments);
    const std::string& problem() const { return m_problem; }

    /// One occurrence of one event, or all of it where that is empty, as the method RemoveObjects takes it.
    static QVariant removedObject(const std::string& uid, const std::string& occurrence);

private:
    struct Opened {
        QString service;
        QString path; ///< Lives as long as the connection.
    };

    std::optional<Opened> open(const std::string& calendar);
    std::optional<QVariantList> ask(const QDBusMessage& call);
    QDBusMessage answerTo(const QDBusMessage& call);

    std::optional<QDBusConnection> m_bus;
    QString m_connectionName;
    std::map<std::string, Opened> m_opened;
    std::string m_problem;
    Patience m_patience;
};

} // namespace quorvell
