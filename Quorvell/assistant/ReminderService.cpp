// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/ReminderService.h"

#include "Quorvell/settings/UsersCalendar.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

/// The zone is looked up each time, for the user may travel while the program runs.
Calendar currentCalendar(const ProgramEnvironment& environment)
{
    const ProgramEnvironment now = ProgramEnvironment::read(environment.programPath.c_str());
    auto calendar = calendarIn(now.timeZone, now.locale);
    return calendar ? *calendar : *Calendar::create("UTC", environment.locale);
}

} // namespace

ReminderService::Buses::Buses()
{
    static int made = 0; // main thread only
    sessionName = QStringLiteral("quorvell-reminders-%1").arg(++made);
    systemName = sessionName + QStringLiteral("-system");
}

ReminderService::Buses::~Buses()
{
    QDBusConnection::disconnectFromBus(sessionName);
    QDBusConnection::disconnectFromBus(systemName);
}

ReminderService::ReminderService(
    const ProgramEnvironment& environment, Notebook& notebook, Scheduler& scheduler, EventLog& log, Voices voices)
    : m_ownSound(voices.sound
            ? nullptr
            : std::make_unique<RingingSound>(environment.runtimeFolder, voices.loudspeaker, scheduler))
    , m_notifier(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_buses.sessionName),
          NoticeNumbers(environment.stateFolder + "/notices"))
    , m_busEnd(QDBusConnection(m_buses.sessionName), BusSignals::Kind::busEnded(),
          [&log, desktopLost = std::move(voices.desktopLost)](const QDBusMessage&) {
              log.record("session_bus_lost", Json::object());
              if (desktopLost)
                  desktopLost();
          })
    , m_presence(QDBusConnection::connectToBus(QDBusConnection::SystemBus, m_buses.systemName),
          QDBusConnection(m_buses.sessionName), scheduler)
    , m_watch({notebook, m_clock, m_notifier, m_presence, log, [environment] { return currentCalendar(environment); },
          std::move(voices.announce), std::move(voices.couldNotShow), voices.sound ? voices.sound : m_ownSound.get(),
          std::move(voices.couldNotSound)})
{
    m_presence.onWake([this] { m_watch.look(); });
    scheduler.post([this, life = std::weak_ptr<bool>(m_life)] {
        if (!life.expired())
            m_watch.look();
    });
}

ReminderService::~ReminderService() = default;

} // namespace quorvell
