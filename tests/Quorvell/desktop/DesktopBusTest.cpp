// SPDX-License-Identifier: MIT
// The real programs of a desktop, on a bus of the test's own.
#include "ChildProcess.h"
#include "MemoryNotebook.h"
#include "Moments.h"
#include "PrivateBus.h"
#include "QtApplication.h"
#include "Quorvell/desktop/DesktopNotifier.h"
#include "Quorvell/desktop/EventsOfDataServer.h"
#include "Quorvell/desktop/LoginWatch.h"
#include "Quorvell/desktop/TimerFdWallClock.h"
#include "Quorvell/reminding/ReminderWatch.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <QDBusConnectionInterface>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace quorvell {
namespace {

using test::ChildProcess;
using test::PrivateBus;
using test::TemporaryFolder;

bool isInstalled(const std::string& program)
{
    return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

/// A home and a session bus for programs that keep files there.
struct Home {
    TemporaryFolder folder;
    std::unique_ptr<PrivateBus> bus;

    Home()
    {
        needQtApplication();
        for (const auto& [name, path] : {std::pair("HOME", "/"), {"XDG_CONFIG_HOME", "/config"},
                 {"XDG_DATA_HOME", "/data"}, {"XDG_CACHE_HOME", "/cache"}, {"XDG_RUNTIME_DIR", "/run"}}) {
            std::filesystem::create_directories(folder.path() + path);
            ::setenv(name, (folder.path() + path).c_str(), 1);
        }
        ::setenv("GSETTINGS_BACKEND", "memory", 1);
        ::unsetenv("WAYLAND_DISPLAY");
        bus = std::make_unique<PrivateBus>();
    }

    QDBusConnection connection(const char* name) const
    {
        return QDBusConnection::connectToBus(
            QString::fromLocal8Bit(std::getenv("DBUS_SESSION_BUS_ADDRESS")), QString::fromLatin1(name));
    }
};

class NoPresence final : public PresenceWatch {
public:
    void onReturn(std::function<void()>) override { }
    void setWaiting(bool) override { }
};

std::string outputOf(const std::string& command)
{
    const TemporaryFolder folder;
    if (std::system((command + " >'" + (folder / "out") + "' 2>/dev/null").c_str()) != 0)
        return "failed";
    std::string text = test::readText(folder / "out");
    while (text.ends_with('\n'))
        text.pop_back();
    return text;
}

TEST(TimerFdWallClock, ringsAtItsMoment)
{
    needQtApplication();
    TimerFdWallClock clock;
    int rings = 0;
    clock.onRing([&] { ++rings; });
    const Instant start = clock.now();
    clock.setAlarm(start + std::chrono::milliseconds(40));
    EXPECT_TRUE(runUntil([&] { return rings > 0; }));
    EXPECT_GE(clock.now(), start + std::chrono::milliseconds(40));
    clock.setAlarm(start - std::chrono::hours(1)); // Past: at once, but never inside the call.
    EXPECT_EQ(rings, 1);
    EXPECT_TRUE(runUntil([&] { return rings == 2; }));
    clock.setAlarm(std::nullopt);
    EXPECT_FALSE(runUntil([&] { return rings > 2; }, std::chrono::milliseconds(60)));
}

TEST(DesktopNotifier, isActedOnReplacedAndWithdrawn)
{
    if (!isInstalled("dunst") || !isInstalled("Xvfb"))
        FAIL() << "dunst or Xvfb is not installed; scripts/test installs what is missing";
    const Home home;
    const ChildProcess display(
        {"Xvfb", "-displayfd", "3", "-screen", "0", "640x480x24", "-nolisten", "tcp", "-noreset"});
    ::setenv("DISPLAY", (":" + display.line()).c_str(), 1);
    const std::string chooser = home.folder / "choose";
    test::writeText(chooser, "#!/bin/sh\ngrep 'In an hour'\n"); // Stands in for the user at the menu of buttons.
    std::filesystem::permissions(chooser, std::filesystem::perms::owner_all);
    test::writeText(home.folder / "dunstrc", "[global]\nstack_duplicates = false\ndmenu = " + chooser + "\n");
    const std::vector<std::string> dunst{"dunst", "-conf", home.folder / "dunstrc"};
    const auto bus = home.connection("notifier");
    std::vector<std::string> actions;
    std::vector<std::string> unseen;
    const auto isThere = [&] {
        return runUntil([&] {
            return bus.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.Notifications")).value();
        });
    };
    const auto displayed = [](const char* count) {
        return runUntil([&] { return outputOf("dunstctl count displayed") == count; });
    };
    const Notice first{"a", "Call <mum>", "Due 5 PM & late", {{"done", "Done"}, {"In an hour", "In an hour"}}};

    auto notifier = std::make_unique<DesktopNotifier>(bus);
    notifier->setReports(
        {.actionTaken = [&](const auto& key, const auto& action) { actions.push_back(key + ": " + action); },
            .couldNotShow = [&](const Notice& notice) { unseen.push_back(notice.key); }});
    notifier->show(first); // Nobody is there yet: told, and not lost.
    EXPECT_TRUE(runUntil([&] { return !unseen.empty(); }));
    auto daemon = std::make_unique<ChildProcess>(dunst);
    ASSERT_TRUE(isThere());
    EXPECT_TRUE(displayed("1"));
    notifier->show({"a", "Call mum", "Due now", first.actions}); // Takes the place of the first.
    notifier->show({"b", "Pay rent", "Due", {{"done", "Done"}}});
    EXPECT_TRUE(displayed("2"));
    notifier->withdraw("b");
    EXPECT_TRUE(displayed("1"));
    std::system("dunstctl context >/dev/null 2>&1");
    EXPECT_TRUE(runUntil([&] { return !actions.empty(); }));
    EXPECT_EQ(actions, (std::vector<std::string>{"a: In an hour"}));
    notifier->withdraw("a");
    EXPECT_TRUE(displayed("0"));

    // A whole reminder: fires, is put off at the menu, is withdrawn.
    MemoryNotebook notebook;
    TimerFdWallClock clock;
    notebook.list = {{.id = "n", .title = "Water the plants", .remindAt = clock.now() + std::chrono::milliseconds(50)}};
    NoPresence presence;
    WrittenLog log;
    {
        DesktopNotifier reminders(bus);
        ReminderWatch watch({notebook, clock, reminders, presence, log,
            [] { return *Calendar::create("Europe/Berlin", "en_GB"); }, nullptr});
        watch.look();
        EXPECT_TRUE(displayed("1"));
        std::system("dunstctl context >/dev/null 2>&1");
        EXPECT_TRUE(runUntil([&] { return *notebook.list.front().remindAt > clock.now() + std::chrono::minutes(59); }));
        EXPECT_TRUE(displayed("0"));
    }
    notifier->show({"c", "Lunch", "Due", {}});
    EXPECT_TRUE(displayed("1"));
    daemon = nullptr;
    daemon = std::make_unique<ChildProcess>(dunst); // Started anew, it shows what is still open.
    ASSERT_TRUE(isThere());
    EXPECT_TRUE(displayed("1"));
    notifier->withdraw("c");
    EXPECT_TRUE(displayed("0"));

    // A program that shows again what the one before had shown, which was killed or its service started anew meanwhile.
    const NoticeNumbers numbers(home.folder / "notices");
    const auto showAnew = [&] {
        notifier = std::make_unique<DesktopNotifier>(bus, numbers);
        notifier->show({"d", "Lunch", "Due", {}});
        return runUntil([&] { return numbers.find("d") && outputOf("dunstctl count displayed") == "1"; });
    };
    EXPECT_TRUE(showAnew());
    const auto before = numbers.find("d");
    EXPECT_TRUE(showAnew());
    EXPECT_FALSE(runUntil([&] { return numbers.find("d") != before; }, std::chrono::milliseconds(100)));
    notifier = std::make_unique<DesktopNotifier>(bus); // Killed before it learned the number.
    notifier->show({"d", "Lunch", "Due", {}});
    EXPECT_FALSE(runUntil([&] { return outputOf("dunstctl count displayed") != "1"; }, std::chrono::milliseconds(300)));
    daemon = nullptr;
    daemon = std::make_unique<ChildProcess>(dunst);
    ASSERT_TRUE(isThere());
    notifier = std::make_unique<DesktopNotifier>(bus, numbers);
    notifier->show({"d", "Lunch", "Due", {}});
    EXPECT_TRUE(runUntil([&] { return numbers.find("d")->server != before->server; }));
    EXPECT_EQ(outputOf("dunstctl count displayed"), "1");
}

TEST(BusSignals, tellThatTheBusEnded)
{
    Home home;
    const auto bus = home.connection("ending");
    int ends = 0;
    const BusSignals signals(bus, BusSignals::Kind::busEnded(), [&](const QDBusMessage&) { ++ends; });
    home.bus = nullptr;
    EXPECT_TRUE(runUntil([&] { return ends == 1; }));
}

TEST(LoginWatch, tellsOfEveryReturn)
{
    if (std::system("/usr/bin/python3 -c 'import dbusmock' 2>/dev/null") != 0)
        FAIL() << "python3-dbusmock is not installed; scripts/test installs what is missing";
    const Home home;
    const std::string address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1); // One bus is both.
    const auto bus = home.connection("login");
    const ChildProcess login({"/usr/bin/python3", "-m", "dbusmock", "--system", "--template", "logind"});
    const ChildProcess saver({"/usr/bin/python3", "-m", "dbusmock", "--session", "org.freedesktop.ScreenSaver",
        "/org/freedesktop/ScreenSaver", "org.freedesktop.ScreenSaver"});
    const std::string call = "gdbus call --session -d ";
    ASSERT_TRUE(runUntil([&] {
        return outputOf(call
                   + "org.freedesktop.login1 -o /org/freedesktop/login1 -m "
                     "org.freedesktop.login1.Manager.CanSuspend")
            != "failed";
    }));
    ASSERT_TRUE(runUntil([&] {
        return outputOf(call
                   + "org.freedesktop.ScreenSaver -o /org/freedesktop/ScreenSaver -m "
                     "org.freedesktop.DBus.Peer.Ping")
            != "failed";
    }));
    VirtualScheduler scheduler;
    LoginWatch watch(bus, bus, scheduler);
    int returns = 0;
    int wakes = 0;
    watch.onReturn([&] { ++returns; });
    watch.onWake([&] { ++wakes; });
    const auto emit = [&](const std::string& name, const std::string& path, const std::string& signal) {
        std::system((call + name + " -o " + path + " -m org.freedesktop.DBus.Mock.EmitSignal " + signal + " >/dev/null")
                        .c_str());
    };
    const std::string login1 = "org.freedesktop.login1";
    const auto sleep = [&](const char* value) {
        emit(login1, "/org/freedesktop/login1", login1 + ".Manager PrepareForSleep b \"[<" + value + ">]\"");
    };
    sleep("true");
    EXPECT_FALSE(runUntil([&] { return returns > 0; }, std::chrono::milliseconds(100)));
    sleep("false");
    EXPECT_TRUE(runUntil([&] { return returns == 1 && wakes == 1; }));
    outputOf(call + login1 + " -o /org/freedesktop/login1 -m org.freedesktop.DBus.Mock.AddSession s1 seat0 "
        + std::to_string(::getuid()) + " me true");
    emit(login1, "/org/freedesktop/login1/session/s1", login1 + ".Session Unlock '' '[]'");
    EXPECT_TRUE(runUntil([&] { return returns == 2; }));
    for (const char* active : {"true", "false"})
        emit("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver",
            std::string("org.freedesktop.ScreenSaver ActiveChanged b \"[<") + active + ">]\"");
    EXPECT_TRUE(runUntil([&] { return returns == 3; }));
}

TEST(EventsOfDataServer, sharesTheDesktopsCalendars)
{
    if (!std::filesystem::exists("/usr/share/dbus-1/services/org.gnome.evolution.dataserver.Calendar8.service"))
        FAIL() << "evolution-data-server is not installed; scripts/test installs what is missing";
    const Home home;
    const Calendar berlin = *Calendar::create("Europe/Berlin", "en_GB");
    const Instant now = at("2026-11-21T09:00:00Z");
    EventsOfDataServer events;
    EXPECT_FALSE(events.isThere()); // Never started from here.
    for (const char* name : {"Sources5", "Calendar8"})
        std::system((std::string("gdbus call --session -d org.freedesktop.DBus -o /org/freedesktop/DBus -m "
                                 "org.freedesktop.DBus.StartServiceByName org.gnome.evolution.dataserver.")
            + name + " 0 >/dev/null")
                        .c_str());
    ASSERT_TRUE(events.isThere());

    const auto happens = [&](const char* from, const char* to) {
        std::vector<std::string> lines;
        const AgendaReading reading = events.read(at(from), at(to), berlin);
        for (const CalendarEvent& event : reading.events)
            lines.push_back(isoText(event.start).substr(5, 11) + "/" + isoText(event.end).substr(5, 11)
                + (event.allDay ? " day " : " ") + event.title);
        lines.insert(lines.end(), reading.problems.begin(), reading.problems.end());
        return lines;
    };
    using Lines = std::vector<std::string>;
    const auto moved = [](const char* start) { return EventChange{.start = at(start)}; };

    const EventDraft draft{
        "quorvell-test-1", "Choir", "Hall", "", at("2026-11-25T17:00:00Z"), at("2026-11-25T18:30:00Z"), false};
    const AgendaVerdict added = events.add(draft, berlin, now);
    ASSERT_TRUE(added.event) << added.problem;
    EXPECT_EQ(added.event->id.text(), "d:system-calendar/quorvell-test-1");
    const AgendaVerdict changed =
        events.change(added.event->id, EventScope::occurrence, moved("2026-11-26T17:00:00Z"), berlin, now);
    ASSERT_TRUE(changed.event) << changed.problem;
    EXPECT_EQ(changed.event->place, "Hall");
    EXPECT_EQ(happens("2026-11-21T00:00:00Z", "2026-12-21T00:00:00Z"), Lines{"11-26T17:00/11-26T18:30 Choir"});
    ASSERT_TRUE(changed.trace);
    EXPECT_EQ(events.takeBack(*changed.trace, berlin).problem, "");
    const Lines once{"11-25T17:00/11-25T18:30 Choir"};
    EXPECT_EQ(happens("2026-11-21T00:00:00Z", "2026-12-21T00:00:00Z"), once);
    const AgendaVerdict removed = events.remove(added.event->id, EventScope::occurrence, berlin, now);
    ASSERT_TRUE(removed.event && removed.trace);
    EXPECT_FALSE(events.find(added.event->id, berlin).event);
    EXPECT_EQ(events.takeBack(*removed.trace, berlin).problem, "");
    EXPECT_EQ(happens("2026-11-21T00:00:00Z", "2026-12-21T00:00:00Z"), once);
    EXPECT_NE(events.takeBack(*removed.trace, berlin).problem, ""); // It is there again already.
    EXPECT_TRUE(events.remove(added.event->id, EventScope::occurrence, berlin, now).event);

    // Series: by the clock of their zone, one time changed, another struck out, then all of it moved.
    const EventDraft weekly{"weekly", "Walk", "", "", at("2027-03-18T06:00:00Z"), at("2027-03-18T07:00:00Z"), false,
        ReminderRepeat::weekly(5)};
    const EventDraft monthly{"monthly", "Rent", "", "", at("2027-01-30T23:00:00Z"), at("2027-01-31T23:00:00Z"), true,
        ReminderRepeat::monthly(31)};
    ASSERT_TRUE(events.add(weekly, berlin, now).event);
    ASSERT_TRUE(events.add(monthly, berlin, now).event);
    EXPECT_EQ(happens("2027-03-20T00:00:00Z", "2027-04-10T00:00:00Z"),
        (Lines{"03-25T06:00/03-25T07:00 Walk", "03-30T22:00/03-31T22:00 day Rent", "04-01T05:00/04-01T06:00 Walk",
            "04-08T05:00/04-08T06:00 Walk"}));
    const auto time = [](const char* occurrence) { return EventID{'d', "system-calendar/weekly", occurrence}; };
    const auto one = EventScope::occurrence;
    EXPECT_EQ(events.change(time("20270325T070000"), one, moved("2027-03-26T12:00:00Z"), berlin, now).problem, "");
    EXPECT_EQ(events.change(time("20270325T070000"), one, moved("2027-03-26T13:00:00Z"), berlin, now).problem, "");
    const AgendaVerdict struckOut = events.remove(time("20270401T070000"), one, berlin, now);
    ASSERT_TRUE(struckOut.trace) << struckOut.problem;
    EXPECT_EQ(events.takeBack(*struckOut.trace, berlin).problem, "");
    EXPECT_EQ(happens("2027-03-20T00:00:00Z", "2027-04-05T00:00:00Z"),
        (Lines{"03-26T13:00/03-26T14:00 Walk", "03-30T22:00/03-31T22:00 day Rent", "04-01T05:00/04-01T06:00 Walk"}));
    EXPECT_EQ(events.remove(time("20270401T070000"), one, berlin, now).problem, "");
    EXPECT_EQ(events.remove({'d', "system-calendar/monthly", "20270331"}, one, berlin, now).problem, "");
    EXPECT_EQ(happens("2027-03-20T00:00:00Z", "2027-04-16T00:00:00Z"),
        (Lines{"03-26T13:00/03-26T14:00 Walk", "04-08T05:00/04-08T06:00 Walk", "04-15T05:00/04-15T06:00 Walk"}));
    const auto all = EventScope::series;
    EXPECT_EQ(events.change(time("20270408T070000"), all, moved("2027-04-09T06:00:00Z"), berlin, now).problem, "");
    const Lines later{"03-26T13:00/03-26T14:00 Walk", "04-09T06:00/04-09T07:00 Walk", "04-16T06:00/04-16T07:00 Walk"};
    EXPECT_EQ(happens("2027-03-20T00:00:00Z", "2027-04-17T00:00:00Z"), later);
    EXPECT_EQ(events.remove(time("20270326T080000"), one, berlin, now).problem, "");
    EXPECT_EQ(happens("2027-03-20T00:00:00Z", "2027-04-17T00:00:00Z"), Lines(later.begin() + 1, later.end()));
    EXPECT_EQ(events.remove(time("20270409T080000"), all, berlin, now).problem, "");
    EXPECT_EQ(events.remove({'d', "system-calendar/monthly", ""}, all, berlin, now).problem, "");
    EXPECT_EQ(happens("2026-11-21T00:00:00Z", "2027-12-21T00:00:00Z"), Lines());
}

} // namespace
} // namespace quorvell
