// SPDX-License-Identifier: MIT
// The day's events and reminders through the real program, beside the real calendar service and without any.
#include "ProgramRun.h"

#include <QThread>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

using namespace quorvell;
using namespace quorvell::walk;

namespace {

/// Another program that puts three lunches, the first an hour from now, into the desktop's calendar.
const char* const makeEvent = R"(
import datetime, dbus
server = 'org.gnome.evolution.dataserver'
bus = dbus.SessionBus()
for name in ('Sources5', 'Calendar8'):
    bus.start_service_by_name(server + '.' + name)
factory = bus.get_object(server + '.Calendar8', '/org/gnome/evolution/dataserver/CalendarFactory')
path, name = factory.OpenCalendar('system-calendar', dbus_interface=server + '.CalendarFactory')
calendar = bus.get_object(name, path)
calendar.Open(dbus_interface=server + '.Calendar')
start = (datetime.datetime.utcnow() + datetime.timedelta(hours=1)).strftime('%Y%m%dT%H%M%SZ')
calendar.CreateObjects(['BEGIN:VEVENT\r\nUID:walk\r\nDTSTAMP:20261121T090000Z\r\nSUMMARY:Lunch with Ana\r\n'
    'DTSTART:' + start + '\r\nDURATION:PT1H\r\nRRULE:FREQ=DAILY;COUNT=3\r\nEND:VEVENT\r\n'],
    dbus.UInt32(0), dbus_interface=server + '.Calendar')
)";

} // namespace

TEST(Agenda, showsWhatTheDesktopsCalendarsHold)
{
    const bool hasServer =
        std::filesystem::exists("/usr/share/dbus-1/services/org.gnome.evolution.dataserver.Calendar8.service");
    if (!hasServer || std::system("/usr/bin/python3 -c 'import dbus' 2>/dev/null") != 0)
        FAIL() << "evolution-data-server or python3-dbus is not installed; scripts/test installs what is missing";
    ProgramHome home;
    home.set("EVENT", makeEvent);
    home.set("GSETTINGS_BACKEND", "memory");
    const QString script = QStringLiteral("/usr/bin/python3 -c \"$EVENT\" && exec \"$0\" agenda week --json");
    const Outcome shown = home.runThrough(QStringLiteral("dbus-run-session"),
        {QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"), script, QStringLiteral(QUORVELL_PROGRAM)});
    EXPECT_EQ(shown.exitCode, 0) << shown.errors;
    const auto events = shown.events();
    ASSERT_EQ(events.size(), 3U) << shown.output << shown.errors;
    EXPECT_EQ(readString(events.front(), "title"), "Lunch with Ana");
    EXPECT_TRUE(readString(events.back(), "id").value_or("").starts_with("d:system-calendar/walk#"));
}

TEST(Agenda, oneProgramAtATimeKeepsTheNotebook)
{
    const ProgramHome home; // No bus: the lock on the folder decides.
    ASSERT_EQ(home.run("remind \"tomorrow at 5 pm call mum\"").exitCode, 0);
    RunningProgram agent(home, "agent");
    Outcome second;
    for (int tries = 0; tries < 100 && second.exitCode != 1; ++tries) {
        QThread::msleep(20);
        second = home.run("reminders done mum");
    }
    EXPECT_EQ(second.exitCode, 1);
    EXPECT_NE(second.errors.find("notebook"), std::string::npos) << second.errors;
    EXPECT_EQ(agent.exitCodeAfter(SIGTERM), 0);
    const Outcome shown = home.run("agenda week");
    EXPECT_EQ(shown.exitCode, 0) << shown.errors;
}
