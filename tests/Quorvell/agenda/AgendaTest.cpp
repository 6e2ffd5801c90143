// SPDX-License-Identifier: MIT
// Catches events lost or changed on their way through a calendar folder, busy time called free, and waits without end.
#include "Quorvell/agenda/Agenda.h"

#include "Moments.h"
#include "PostQueue.h"
#include "Quorvell/agenda/CalendarFolder.h"
#include "Quorvell/agenda/FreeTime.h"
#include "Quorvell/files/Folder.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utime.h>

#include <atomic>
#include <ctime>
#include <filesystem>
#include <functional>
#include <thread>
#include <utility>

namespace {
std::function<void()> beforeRenaming; ///< Once.
} // namespace

/// Stands before the system's, so that another program can be at work in the last instant.
extern "C" int renameat2(int folder, const char* from, int otherFolder, const char* to, unsigned flags) noexcept
{
    if (const auto happens = std::exchange(beforeRenaming, nullptr))
        happens();
    return static_cast<int>(::syscall(SYS_renameat2, folder, from, otherFolder, to, flags));
}

namespace quorvell {
namespace {

using test::TemporaryFolder;

EventDraft lunch(const char* start = "2026-11-23T11:00:00Z")
{
    return {"11111111-aaaa", "Lunch with Ana", "Café, corner", "Bring the book", at(start),
        at(start) + std::chrono::hours(1), false};
}

const Instant now = at("2026-11-21T09:00:00Z");
const Instant weekEnd = at("2026-11-28T09:00:00Z");

TEST(CalendarFolder, keepsOneEventAFile)
{
    const TemporaryFolder home;
    CalendarFolder folder(home / "Calendar");
    EXPECT_TRUE(folder.read(now, weekEnd, berlin()).events.empty());
    const AgendaVerdict added = folder.add(lunch(), berlin(), now);
    ASSERT_TRUE(added.event) << added.problem;
    EXPECT_EQ(added.event->id.text(), "f:11111111-aaaa");
    const std::string path = home / "Calendar/11111111-aaaa.ics";
    const std::string text = test::readText(path);
    EXPECT_NE(text.find("DTSTART;TZID=Europe/Berlin:20261123T120000"), std::string::npos) << text;
    EXPECT_EQ(text.find("VTIMEZONE"), std::string::npos);
    struct stat status { };
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600U);

    EXPECT_FALSE(folder.add(lunch(), berlin(), now).event); // Never in the place of another.
    test::writeText(home / "Calendar/broken.ics", "nonsense");
    AgendaReading reading = folder.read(now, weekEnd, berlin());
    ASSERT_EQ(reading.events.size(), 1U);
    EXPECT_EQ(reading.events.front().place, "Café, corner");
    EXPECT_EQ(reading.problems.size(), 1U);

    const EventChange change{.start = at("2026-11-24T15:30:00Z")};
    const AgendaVerdict changed = folder.change(added.event->id, EventScope::occurrence, change, berlin(), now);
    ASSERT_TRUE(changed.event) << changed.problem;
    EXPECT_EQ(isoText(changed.event->end), "2026-11-24T16:30:00.000Z");
    EXPECT_TRUE(folder.remove(added.event->id, EventScope::occurrence, berlin(), now).event);
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(folder.remove(added.event->id, EventScope::occurrence, berlin(), now).event);
    EXPECT_EQ(CalendarFolder(home / "Calendar/broken.ics").read(now, weekEnd, berlin()).problems.size(), 1U);
}

TEST(CalendarFolder, losesNothingThatIsWrittenInTheLastInstant)
{
    const TemporaryFolder home;
    CalendarFolder folder(home.path());
    const AgendaVerdict added = folder.add(lunch(), berlin(), now);
    ASSERT_TRUE(added.event) << added.problem;
    const std::string path = home / "11111111-aaaa.ics";
    for (const bool isRemoved : {false, true}) {
        beforeRenaming = [&] {
            test::writeText(home / "saved", "of another program");
            std::filesystem::rename(home / "saved", path);
        };
        const std::string text = test::readText(path);
        const auto verdict = isRemoved
            ? folder.remove(added.event->id, EventScope::series, berlin(), now)
            : folder.change(added.event->id, EventScope::series, {.title = "Brunch"}, berlin(), now);
        EXPECT_NE(verdict.problem.find("Another program"), std::string::npos) << verdict.problem;
        EXPECT_EQ(test::readText(path), "of another program");
        EXPECT_EQ(fileNamesIn(home.path())->size(), 1U);
        test::writeText(path, text);
    }
}

TEST(CalendarFolder, keepsWhatAKilledProgramLeft)
{
    const TemporaryFolder home;
    CalendarFolder folder(home.path());
    const AgendaVerdict added = folder.add(lunch(), berlin(), now);
    ASSERT_TRUE(added.event) << added.problem;
    const std::string young = home / ".quorvell-0123456789abcdef.tmp";
    const std::string old = home / ".quorvell-fedcba9876543210.tmp";
    test::writeText(young, "of a program at work");
    test::writeText(old, "saved by another program");
    const utimbuf twoDaysAgo{std::time(nullptr) - 172'800, std::time(nullptr) - 172'800};
    ASSERT_EQ(::utime(old.c_str(), &twoDaysAgo), 0);
    const EventChange change{.title = "Brunch"};
    ASSERT_TRUE(folder.change(added.event->id, EventScope::occurrence, change, berlin(), now).event);
    EXPECT_TRUE(std::filesystem::exists(young));
    EXPECT_FALSE(std::filesystem::exists(old));
    EXPECT_EQ(test::readText(home / ".history/quorvell-fedcba9876543210.tmp.ics"), "saved by another program");
    EXPECT_EQ(folder.read(now, weekEnd, berlin()).events.size(), 1U);
}

TEST(CalendarFolder, writesIntoTheFirstCalendarOfMany)
{
    const TemporaryFolder home;
    std::filesystem::create_directories(home / "work");
    std::filesystem::create_directories(home / "personal");
    CalendarFolder folder(home.path());
    ASSERT_TRUE(folder.add(lunch(), berlin(), now).event);
    EXPECT_TRUE(std::filesystem::exists(home / "personal/11111111-aaaa.ics"));
    EXPECT_EQ(folder.read(now, weekEnd, berlin()).events.size(), 1U);
}

TEST(Agenda, readsAllAndAnswersLater)
{
    const TemporaryFolder home;
    test::PostQueue posts;
    std::vector<std::unique_ptr<CalendarSource>> sources;
    sources.push_back(std::make_unique<CalendarFolder>(home.path()));
    std::optional<AgendaVerdict> verdict;
    std::optional<AgendaReading> reading;
    {
        Agenda agenda(std::move(sources), posts.poster());
        agenda.add(lunch(), berlin(), now, [&](const AgendaVerdict& given) { verdict = given; });
        EXPECT_FALSE(verdict);
        ASSERT_TRUE(posts.runUntil([&] { return verdict.has_value(); }));
        agenda.read(now, weekEnd, berlin(), [&](const AgendaReading& given) { reading = given; });
        ASSERT_TRUE(posts.runUntil([&] { return reading.has_value(); }));
        EXPECT_EQ(reading->events.size(), 1U);
        agenda.find({'x', "11111111-aaaa", ""}, berlin(), [&](const AgendaVerdict& given) { verdict = given; });
        ASSERT_TRUE(posts.runUntil([&] { return !verdict->event; }));
        agenda.read(now, weekEnd, berlin(), [&](const AgendaReading&) { FAIL() << "after the end"; });
    }
    posts.runPosted();
}

TEST(CalendarFolder, breaksOffAndSaysSo)
{
    const TemporaryFolder home;
    CalendarFolder folder(home.path());
    ASSERT_TRUE(folder.add(lunch(), berlin(), now).event);
    for (int index = 0; index < 30; ++index)
        test::writeText(home / ("broken" + std::to_string(index) + ".ics"), "nonsense");
    AgendaReading reading = folder.read(now, weekEnd, berlin());
    EXPECT_TRUE(reading.isWhole);
    ASSERT_EQ(reading.problems.size(), CalendarFolder::mostProblems + 1);
    EXPECT_EQ(reading.problems.back(), "There are 10 more problems like these.");

    const EventID id{'f', "11111111-aaaa", ""};
    folder.havePatience({.until = Patience::Clock::now()});
    reading = folder.read(now, weekEnd, berlin());
    EXPECT_FALSE(reading.isWhole);
    EXPECT_TRUE(reading.problems.back().ends_with("took too long to read; events may be missing."));
    for (const AgendaVerdict& verdict :
        {folder.find(id, berlin()), folder.change(id, EventScope::series, {.title = "Dinner"}, berlin(), now),
            folder.remove(id, EventScope::series, berlin(), now)})
        EXPECT_NE(verdict.problem.find("took too long to read, so nothing was done"), std::string::npos);
    folder.havePatience({});
    EXPECT_EQ(folder.find(id, berlin()).event->title, "Lunch with Ana");
}

/// A calendar on a disk that does not answer for a while, whatever it is told.
class SlowSource final : public CalendarSource {
public:
    explicit SlowSource(std::chrono::milliseconds pause)
        : m_pause(pause)
    {
    }
    char letter() const override { return 's'; }
    bool isThere() override { return true; }
    AgendaReading read(Instant, Instant, const Calendar&) override
    {
        std::this_thread::sleep_for(m_pause);
        return {};
    }
    AgendaVerdict add(const EventDraft&, const Calendar&, Instant) override
    {
        std::this_thread::sleep_for(m_pause);
        ++added;
        return {CalendarEvent(), ""};
    }
    AgendaVerdict change(const EventID&, EventScope, const EventChange&, const Calendar&, Instant) override
    {
        return {};
    }
    AgendaVerdict remove(const EventID&, EventScope, const Calendar&, Instant) override { return {}; }
    AgendaVerdict takeBack(const EventTrace&, const Calendar&) override { return {}; }
    AgendaVerdict find(const EventID&, const Calendar&) override { return {}; }

    static inline std::atomic<int> added = 0;

private:
    std::chrono::milliseconds m_pause;
};

std::vector<std::unique_ptr<CalendarSource>> slow(std::chrono::milliseconds pause)
{
    std::vector<std::unique_ptr<CalendarSource>> sources;
    sources.push_back(std::make_unique<SlowSource>(pause));
    return sources;
}

TEST(Agenda, refusesWhatCannotBegin)
{
    using namespace std::chrono_literals;
    test::PostQueue posts;
    AgendaWorker::Limits limits;
    limits.wait = 100ms;
    limits.mostWaiting = 3;
    std::vector<std::string> problems;
    std::size_t answers = 0;
    Agenda agenda(slow(300ms), posts.poster(), limits);
    for (int question = 0; question < 20; ++question)
        agenda.read(now, weekEnd, berlin(), [&](const AgendaReading& given) {
            ++answers;
            EXPECT_EQ(given.isWhole, given.problems.empty());
            problems.insert(problems.end(), given.problems.begin(), given.problems.end());
        });
    const int before = SlowSource::added;
    agenda.add(lunch(), berlin(), now, [&](const AgendaVerdict& given) {
        ++answers;
        problems.push_back(given.problem);
    });
    ASSERT_TRUE(posts.runUntil([&] { return answers == 21; }));
    ASSERT_GE(problems.size(), 20U); // All but one that began, unless the computer was too busy for it.
    EXPECT_EQ(std::ranges::count_if(problems,
                  [](const std::string& problem) {
                      return problem.find("busy with an earlier question, so nothing was done") != std::string::npos;
                  }),
        1);
    EXPECT_EQ(SlowSource::added, before);
}

TEST(Agenda, endsInTimeWhateverItsSourcesDo)
{
    using namespace std::chrono_literals;
    using Clock = std::chrono::steady_clock;
    const int before = SlowSource::added;
    test::PostQueue posts;
    const auto endingTakes = [&](std::chrono::milliseconds pause, auto ask) {
        AgendaWorker::Limits limits;
        limits.end = 2s;
        limits.stop = 50ms;
        auto agenda = std::make_unique<Agenda>(slow(pause), posts.poster(), limits);
        ask(*agenda);
        std::this_thread::sleep_for(20ms); // It has begun.
        const auto began = Clock::now();
        agenda.reset();
        posts.runPosted(); // Whatever comes after the end is not heard.
        return Clock::now() - began;
    };
    const auto nobody = [](const auto&) { FAIL() << "after the end"; };
    EXPECT_LT(endingTakes(100ms, [&](Agenda& agenda) { agenda.add(lunch(), berlin(), now, nobody); }), 10s);
    EXPECT_EQ(SlowSource::added, before + 1); // What was asked for is done.
    EXPECT_LT(endingTakes(60s, [&](Agenda& agenda) { agenda.read(now, weekEnd, berlin(), nobody); }), 30s);
}

/// Another calendar program, with a home of its own, over the folder.
std::string khal(const TemporaryFolder& home, const std::string& arguments)
{
    test::writeText(home / "khal.conf",
        "[calendars]\n[[one]]\npath = " + (home / "Calendar")
            + "\n[locale]\nlocal_timezone = Europe/Berlin\ndefault_timezone = Europe/Berlin\ntimeformat = %H:%M\n"
              "dateformat = %Y-%m-%d\nlongdateformat = %Y-%m-%d\ndatetimeformat = %Y-%m-%d %H:%M\n"
              "longdatetimeformat = %Y-%m-%d %H:%M\n[sqlite]\npath = "
            + (home / "khal.db") + "\n");
    const std::string command = "LC_ALL=C.UTF-8 HOME='" + home.path() + "' khal -c '" + (home / "khal.conf") + "' "
        + arguments + " >'" + (home / "out") + "' 2>'" + (home / "errors") + "' </dev/null";
    const int result = std::system(command.c_str());
    return test::readText(home / "out") + (result == 0 ? "" : test::readText(home / "errors"));
}

TEST(CalendarFolder, sharesWithAnotherCalendarProgram)
{
    if (std::system("command -v khal >/dev/null") != 0)
        FAIL() << "khal is not installed; scripts/test installs what is missing";
    const TemporaryFolder home;
    CalendarFolder folder(home / "Calendar");
    const auto added = folder.add(lunch(), berlin(), now);
    ASSERT_TRUE(added.event) << added.problem;
    const std::string listed = khal(home, "list -f '{start}|{title}|{location}' 2026-11-23 1d");
    EXPECT_NE(listed.find("2026-11-23 12:00|Lunch with Ana|Café, corner"), std::string::npos) << listed;
    EventDraft rent{"22222222-bbbb", "Rent", "", "", at("2027-01-30T23:00:00Z"), at("2027-01-31T23:00:00Z"), true,
        ReminderRepeat::monthly(31)};
    ASSERT_TRUE(folder.add(rent, berlin(), now).event);
    const std::string rents = khal(home, "list -f '{start}|{title}' 2027-01-31 60d");
    for (const char* day : {"2027-01-31|Rent", "2027-02-28|Rent", "2027-03-31|Rent"})
        EXPECT_NE(rents.find(day), std::string::npos) << rents;

    khal(home, "new -a one 2026-12-24 2026-12-26 Holidays");
    khal(home, "new -a one -l Studio --repeat weekly 2026-11-25 18:00 2026-11-25 19:30 Choir");
    const auto events = folder.read(now, weekEnd + std::chrono::days(7), berlin()).events;
    ASSERT_EQ(events.size(), 3U) << test::readText(home / "errors");
    EXPECT_EQ(events[1].title, "Choir");
    EXPECT_EQ(isoText(events[1].start), "2026-11-25T17:00:00.000Z");
    EXPECT_EQ(isoText(events[2].end), "2026-12-02T18:30:00.000Z");
    const EventChange later{.start = events[1].start + std::chrono::hours(1)};
    ASSERT_TRUE(folder.change(events[1].id, EventScope::occurrence, later, berlin(), now).event);
    ASSERT_TRUE(folder.remove(events[2].id, EventScope::occurrence, berlin(), now).event);
    const std::string choir = khal(home, "list -f '{start}|{title}' 2026-11-24 20d");
    EXPECT_NE(choir.find("2026-11-25 19:00|Choir"), std::string::npos) << choir;
    EXPECT_EQ(choir.find("2026-12-02"), std::string::npos) << choir;
    EXPECT_NE(choir.find("2026-12-09 18:00|Choir"), std::string::npos) << choir;
    const auto holidays = folder.read(at("2026-12-24T12:00:00Z"), at("2026-12-24T13:00:00Z"), berlin()).events;
    ASSERT_EQ(holidays.size(), 1U) << test::readText(home / "errors");
    EXPECT_EQ(isoText(holidays[0].end), "2026-12-26T23:00:00.000Z");
}

TEST(WakingHours, areReadStrictly)
{
    for (const auto& [written, read] : {std::pair("8-22", "8:00 to 22:00"), {" 7:30 - 23:15 ", "7:30 to 23:15"},
             {"0-24", "0:00 to 24:00"}, {"10:00-02:00", "10:00 to 2:00"}})
        EXPECT_EQ(WakingHours::parse(written).value_or(WakingHours{}).text(), read);
    EXPECT_EQ(WakingHours::parse("22-6")->length(), std::chrono::hours(8));
    for (const char* text :
        {"", "8", "8-", "-8", "8-8", "24-8", "8-25", "8:60-9", "8:5-9", "8:00:00-9", "8-9-10", "x-y"})
        EXPECT_FALSE(WakingHours::parse(text)) << text;
}

TEST(FreeTime, findsGapsOfWakingHours)
{
    const auto november = [](const std::string& moment) { return at("2026-11-" + moment + ":00Z"); };
    const auto busy = [&](const char* start, const char* end) {
        CalendarEvent event;
        event.start = november(start);
        event.end = november(end);
        return event;
    };
    CalendarEvent holiday = busy("22T23:00", "23T23:00");
    holiday.allDay = true;
    CalendarEvent offered = busy("23T07:00", "23T21:00");
    offered.isBusy = false;
    const struct Row {
        const char* name;
        std::vector<CalendarEvent> events;
        const char* from;
        const char* to;
        int minutes;
        std::vector<std::string> found;
        const char* waking = "8-22";
    } rows[] = {
        {"of somebody who stays up", {busy("23T23:30", "24T00:10")}, "22T23:30", "24T09:30", 30,
            {"23:30-01:00", "11:00-23:30", "00:15-01:00"}, "12:00-2:00"},
        {"an empty day, from the next quarter on", {holiday, offered}, "23T09:07", "23T23:00", 60, {"09:15-21:00"}},
        {"overlapping and touching events",
            {busy("23T08:00", "23T12:00"), busy("23T09:00", "23T10:00"), busy("23T12:00", "23T13:00")}, "22T23:00",
            "23T23:00", 60, {"07:00-08:00", "13:00-21:00"}},
        {"a gap that is just long enough", {busy("23T06:00", "23T12:00"), busy("23T12:45", "23T22:00")}, "22T23:00",
            "23T23:00", 45, {"12:00-12:45"}},
        {"one that is too short", {busy("23T06:00", "23T12:00"), busy("23T12:45", "23T22:00")}, "22T23:00", "23T23:00",
            46, {}},
        {"two days, the night between", {}, "23T20:00", "24T10:00", 60, {"20:00-21:00", "07:00-10:00"}},
        {"the wrong way round", {}, "24T10:00", "23T10:00", 60, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> found;
        for (const FreeTime& free : FreeTime::find(row.events,
                 {.length = std::chrono::minutes(row.minutes),
                 .from = november(row.from),
                 .to = november(row.to),
                 .waking = *WakingHours::parse(row.waking)},
                 berlin()))
            found.push_back(isoText(free.start).substr(11, 5) + "-" + isoText(free.end).substr(11, 5));
        EXPECT_EQ(found, row.found);
    }
}

} // namespace
} // namespace quorvell
