// SPDX-License-Identifier: MIT
// Catches reminders fired twice, late or never: sleep, clocks that are set, restarts.
#include "Quorvell/reminding/ReminderWatch.h"

#include "FixtureTable.h"
#include "MemoryNotebook.h"
#include "Moments.h"
#include "Quorvell/reminding/IdleReturn.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "WrittenLog.h"

#include <random>
#include <sstream>
#include <tuple>

namespace quorvell {
namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;

class FakeClock final : public WallClockTimer {
public:
    Instant now() const override { return time; }
    void setAlarm(std::optional<Instant> moment) override { alarm = moment; }
    void onRing(std::function<void()> rang) override { ring = std::move(rang); }

    /// Lets the time go by. Asleep, the computer rings only once it is awake again.
    void pass(Instant until)
    {
        for (int rings = 0; alarm && *alarm <= until; ++rings) {
            ASSERT_LT(rings, 5000) << "it rings for ever";
            time = std::max(time, *alarm);
            ring();
        }
        time = until;
    }
    void sleep(Instant until)
    {
        time = until;
        pass(until);
    }
    void set(Instant moment)
    {
        time = moment;
        ring();
        pass(moment);
    }

    Instant time = at("2026-11-21T09:00:00Z");
    std::optional<Instant> alarm;
    std::function<void()> ring;
};

class FakeNotifier final : public Notifier {
public:
    void setReports(Reports newReports) override { reports = std::move(newReports); }
    void show(const Notice& notice) override
    {
        shown.push_back(notice);
        open[notice.key] = notice;
    }
    void withdraw(const std::string& key) override { open.erase(key); }

    Reports reports;
    std::vector<Notice> shown;
    std::map<std::string, Notice> open;
};

class FakePresence final : public PresenceWatch {
public:
    void onReturn(std::function<void()> newCameBack) override { cameBack = std::move(newCameBack); }
    void setWaiting(bool newIsWaiting) override { isWaiting = newIsWaiting; }

    std::function<void()> cameBack;
    bool isWaiting = false;
};

struct Bench {
    MemoryNotebook notebook;
    FakeClock clock;
    FakeNotifier notifier;
    FakePresence presence;
    WrittenLog log;
    std::string zone = "Europe/Berlin";
    bool isHeard = true; ///< Somebody is there to whom it is said as well.
    std::vector<std::string> said;
    std::unique_ptr<ReminderWatch> watch;

    void start()
    {
        watch = nullptr;
        watch = std::make_unique<ReminderWatch>(ReminderWatch::Ports{notebook, clock, notifier, presence, log,
            [this] { return *Calendar::create(zone, "en_US"); },
            isHeard
                ? std::function<void(const std::string&)>([this](const auto& sentence) { said.push_back(sentence); })
                : nullptr});
        watch->look();
    }
    void add(const std::string& id, Instant moment, const char* rule = nullptr)
    {
        notebook.list.push_back({.id = id, .title = "Task " + id, .remindAt = moment});
        if (rule)
            notebook.list.back().repeatRule = rule;
    }
    Note note(const std::string& id) const { return notebook.note(id).value_or(Note()); }
    void press(const std::string& key, const std::string& action) { notifier.reports.actionTaken(key, action); }
};

/// How often a reminder at three in the afternoon fires, seen in the moments at which it was shown.
TEST(Notice, isReadAsItIsWritten)
{
    const Notice notice{
        "a\u202e", "Call\u202e mum\x1b[31m\nnow", "Due\u2066 5 PM\nBring\x07 tea", {{"k\u2066", "Do\u200fne"}}};
    EXPECT_EQ(
        notice.printable(), (Notice{"a\u202e", "Call mum[31m now", "Due 5 PM\nBring tea", {{"k\u2066", "Done"}}}));
}

TEST(ReminderWatch, firesEachOccurrenceOnceAcrossClockChanges)
{
    // Zone, rule and length in days; from when; the first occurrence; when it fires, without the year.
    for (const auto& [name, lines] : test::fixtureRows("reminding/clockChanges.txt", 4)) {
        SCOPED_TRACE(name);
        Bench bench;
        std::string rule;
        int daysLong = 0;
        std::istringstream(lines[0]) >> bench.zone >> rule >> daysLong;
        bench.clock.time = at(lines[1]);
        bench.add("a", at(lines[2]), rule == "once" ? nullptr : rule.c_str());
        bench.start();
        const Instant end = at(lines[1]) + days(daysLong);
        std::string fired;
        std::size_t count = 0;
        for (; count < 10 && bench.clock.alarm && *bench.clock.alarm <= end; ++count) {
            const Instant moment = *bench.clock.alarm;
            bench.clock.pass(moment);
            fired += (fired.empty() ? "" : " ") + isoText(moment).substr(5, 11);
        }
        EXPECT_EQ(fired, lines[3]);
        EXPECT_EQ(bench.notifier.shown.size(), count);
        EXPECT_EQ(bench.notifier.open.size(), 1U); // Each takes the place of the one before.
    }
}

TEST(ReminderWatch, standsAClockThatIsSet)
{
    for (const char* rule : {static_cast<const char*>(nullptr), "daily"}) {
        Bench bench;
        bench.add("a", at("2026-11-21T10:00:00Z"), rule);
        bench.start();
        bench.clock.pass(at("2026-11-21T10:30:00Z"));
        EXPECT_EQ(bench.notifier.shown.size(), 1U);
        bench.clock.set(at("2026-11-21T09:30:00Z")); // Back an hour: its time comes again.
        bench.clock.pass(at("2026-11-21T10:30:00Z"));
        EXPECT_EQ(bench.notifier.shown.size(), 1U);
        bench.add("b", at("2026-11-22T08:00:00Z"));
        bench.watch->look();
        bench.clock.set(at("2026-11-22T10:30:00Z")); // Forward a day.
        const std::size_t shown = bench.notifier.shown.size();
        EXPECT_GE(shown, 2U);
        bench.clock.set(at("2026-11-21T10:40:00Z")); // And back.
        bench.clock.pass(at("2026-11-22T10:35:00Z"));
        EXPECT_EQ(bench.notifier.shown.size(), shown);
        bench.press("b", "In 10 minutes"); // Of one that fired early, too.
        bench.clock.pass(at("2026-11-22T10:50:00Z"));
        EXPECT_EQ(bench.notifier.shown.size(), shown + (rule ? 0 : 1)) << (rule ? rule : "once");
    }
}

TEST(ReminderWatch, catchesUpGently)
{
    Bench bench;
    for (int index = 0; index < 9; ++index)
        bench.add(std::string(1, static_cast<char>('a' + index)), at("2026-11-22T08:00:00Z") + hours(index), "daily");
    bench.start();
    bench.clock.sleep(at("2026-11-28T20:00:00Z")); // Nearly a week.
    ASSERT_EQ(bench.notifier.shown.size(), 1U);
    EXPECT_EQ(bench.notifier.shown.front().title, "9 reminders came due");
    EXPECT_TRUE(bench.notifier.shown.front().body.ends_with("… and 3 more"));
    bench.start(); // Started again, nothing fires twice.
    EXPECT_EQ(bench.notifier.shown.size(), 1U);
    bench.clock.pass(at("2026-11-29T08:00:00Z"));
    EXPECT_EQ(bench.notifier.shown.size(), 2U);

    Bench owned;
    owned.notebook.owner = false;
    owned.add("a", at("2026-11-21T08:00:00Z"));
    owned.start();
    EXPECT_TRUE(owned.notifier.shown.empty());
    EXPECT_FALSE(owned.clock.alarm);
    owned.notebook.owner = true; // The other program ended.
    owned.watch->look();
    EXPECT_EQ(owned.notifier.shown.size(), 1U);
}

TEST(ReminderWatch, carriesOutWhatIsPressed)
{
    const std::tuple<const char*, const char*, const char*, bool> rows[] = {
        {"2026-11-21T10:00:00Z", "done", "2026-11-21T10:00:00.000Z", false},
        {"2026-11-21T12:00:00Z", "In 10 minutes", "2026-11-21T12:10:00.000Z", true},
        {"2026-11-21T10:00:00Z", "This evening", "2026-11-21T17:00:00.000Z", true}, // 18:00 in Berlin
        {"2026-11-21T16:30:00Z", "This evening", "2026-11-21T17:00:00.000Z", true},
        {"2026-11-21T20:00:00Z", "This evening", "2026-11-21T20:10:00.000Z", true},
        {"2026-11-21T10:00:00Z", "Tomorrow morning", "2026-11-22T08:00:00.000Z", true},
        {"2026-11-21T10:00:00Z", "unheard of", "2026-11-21T10:00:00.000Z", true},
    };
    for (const auto& [pressedAt, action, remindAt, isPending] : rows) {
        SCOPED_TRACE(std::string(action) + " " + pressedAt);
        Bench bench;
        bench.add("a", at("2026-11-21T10:00:00Z"));
        bench.start();
        bench.clock.pass(at(pressedAt));
        bench.press("a", action);
        EXPECT_EQ(isoText(*bench.note("a").remindAt), remindAt);
        EXPECT_EQ(ReminderState::isPending(bench.note("a")), isPending);
        EXPECT_EQ(bench.notifier.open.empty(), std::string(action) != "unheard of");
        bench.clock.pass(at(pressedAt) + days(2));
        EXPECT_EQ(bench.notifier.shown.size(), isPending && bench.note("a").remindAt > at(pressedAt) ? 2U : 1U);
    }

    Bench settled; // Elsewhere: ticked off by voice, deleted in an editor.
    settled.add("a", at("2026-11-21T10:00:00Z"));
    settled.add("b", at("2026-11-21T10:00:00Z"));
    settled.start();
    settled.clock.pass(at("2026-11-21T10:00:00Z"));
    EXPECT_EQ(settled.notifier.open.size(), 2U);
    EXPECT_EQ(settled.said, (std::vector<std::string>{"Reminder: Task a.", "Reminder: Task b."}));
    settled.notebook.list.front().doneAt = settled.clock.time;
    settled.notebook.list.pop_back();
    settled.watch->look();
    EXPECT_TRUE(settled.notifier.open.empty());
}

TEST(ReminderWatch, firesOnReturnAndWithoutADisk)
{
    Bench bench;
    bench.add("a", Instant());
    ReminderState::whenBack(bench.notebook.list.front());
    bench.add("archived", Instant());
    ReminderState::whenBack(bench.notebook.list.back());
    bench.notebook.list.back().archived = true;
    bench.start();
    EXPECT_TRUE(bench.presence.isWaiting);
    EXPECT_TRUE(bench.notifier.shown.empty());
    bench.presence.cameBack();
    EXPECT_EQ(bench.notifier.shown.size(), 1U);
    EXPECT_FALSE(bench.presence.isWaiting);
    EXPECT_FALSE(bench.note("a").trigger);
    EXPECT_TRUE(bench.note("archived").trigger);

    Bench full;
    full.add("a", at("2026-11-21T10:00:00Z"));
    full.notebook.list.back().reviewed = at("2026-11-21T10:30:00Z"); // Of no time that it ever had.
    full.notebook.refusal = "The disk is full. Free some space.";
    full.start();
    full.clock.pass(at("2026-11-21T12:00:00Z"));
    full.watch->look();
    EXPECT_EQ(full.notifier.shown.size(), 1U);
    full.press("a", "done");
    EXPECT_EQ(full.notifier.shown.back().body, full.notebook.refusal);

    Bench unseen; // The desktop's service is not there yet, and the program ends before it comes.
    unseen.isHeard = false;
    unseen.add("a", at("2026-11-21T10:00:00Z"));
    unseen.start();
    unseen.clock.pass(at("2026-11-21T10:00:00Z"));
    unseen.watch->look();
    EXPECT_EQ(unseen.notifier.shown.size(), 1U);
    EXPECT_FALSE(unseen.note("a").reviewed);
    unseen.start();
    EXPECT_EQ(unseen.notifier.shown.size(), 2U);
    unseen.notifier.reports.shown("a");
    EXPECT_EQ(unseen.note("a").reviewed, at("2026-11-21T10:00:00Z"));
    unseen.start();
    EXPECT_EQ(unseen.notifier.shown.size(), 2U);

    IdleReturn idle;
    std::vector<bool> returns;
    for (const minutes sample : {minutes(1), minutes(4), minutes(5), minutes(9), minutes(0), minutes(0)})
        returns.push_back(idle.cameBack(sample));
    EXPECT_EQ(returns, (std::vector<bool>{false, false, false, false, true, false}));
}

/// How many reminders a notice speaks of.
std::size_t countIn(const Notice& notice)
{
    return notice.key.starts_with("summary") ? static_cast<std::size_t>(std::stoi(notice.title)) : 1;
}

/// Whatever happens to clock, sleep and program, across changes of the clock too, each reminder is shown once after its
/// time, and again only when it was put off.
TEST(ReminderWatch, losesAndRepeatsNothingAtRandom)
{
    const std::pair<const char*, const char*> changes[] = {{"Europe/Berlin", "2026-03-28T01:00:00Z"},
        {"America/New_York", "2026-10-31T06:00:00Z"}, {"Australia/Lord_Howe", "2026-04-03T15:00:00Z"},
        {"Europe/Berlin", "2028-02-28T12:00:00Z"}};
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
        Bench bench;
        bench.zone = changes[seed % std::size(changes)].first;
        bench.clock.time = at(changes[seed % std::size(changes)].second);
        bench.start();
        std::map<std::string, std::size_t> expected;
        for (int step = 0; step < 60; ++step) {
            const Instant now = bench.clock.time;
            switch (below(7)) {
            case 0:
            case 1: {
                const std::string id = "n" + std::to_string(step);
                bench.add(id, now + minutes(1 + below(3000)));
                expected[id] = 1;
                bench.watch->look();
                break;
            }
            case 2:
                bench.clock.pass(now + minutes(below(600)));
                break;
            case 3:
                bench.clock.sleep(now + hours(below(170)));
                break;
            case 4:
                bench.clock.set(now + hours(below(2) == 0 ? -1 : 24));
                break;
            case 5:
                bench.start();
                break;
            case 6:
                if (!bench.notifier.open.empty() && !bench.notifier.open.begin()->first.starts_with("summary")) {
                    const std::string id = bench.notifier.open.begin()->first;
                    bench.press(id, "In an hour");
                    expected[id] += bench.notifier.open.contains(id) ? 0 : 1;
                }
                break;
            }
        }
        bench.clock.pass(bench.clock.time + days(30));
        std::size_t shown = 0;
        for (const Notice& notice : bench.notifier.shown)
            shown += countIn(notice);
        std::size_t all = 0;
        for (const auto& [id, count] : expected) {
            EXPECT_EQ(bench.note(id).reviewed, bench.note(id).remindAt) << id; // Shown at its last time.
            all += count;
        }
        EXPECT_EQ(shown, all);
    }
}

} // namespace
} // namespace quorvell
