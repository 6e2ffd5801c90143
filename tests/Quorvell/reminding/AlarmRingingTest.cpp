// SPDX-License-Identifier: MIT
// Catches alarms that ring late, never, for ever, or again after they were stopped; and marks that other programs
// wrote.
#include "Quorvell/reminding/AlarmRinging.h"

#include "MemoryNotebook.h"
#include "Moments.h"
#include "Quorvell/reminding/ReminderWatch.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "WrittenLog.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

struct RingClock final : WallClockTimer {
    Instant now() const override { return time; }
    void setAlarm(std::optional<Instant> moment) override { alarm = moment; }
    void onRing(std::function<void()> rang) override { ring = std::move(rang); }
    void pass(Instant until)
    {
        for (int rings = 0; alarm && *alarm <= until; ++rings) {
            ASSERT_LT(rings, 100) << "it rings for ever";
            time = std::max(time, *alarm);
            ring();
        }
        time = until;
    }

    Instant time = at("2026-11-21T05:00:00Z");
    std::optional<Instant> alarm;
    std::function<void()> ring;
};

struct RingNotifier final : Notifier {
    void setReports(Reports newReports) override { reports = std::move(newReports); }
    void show(const Notice& notice) override { open[notice.key] = notice; }
    void withdraw(const std::string& key) override { open.erase(key); }

    Reports reports;
    std::map<std::string, Notice> open;
};

struct RingPresence final : PresenceWatch {
    void onReturn(std::function<void()>) override { }
    void setWaiting(bool) override { }
};

struct RingSound final : AlarmSound {
    void start() override { isOn = true; }
    void stop() override { isOn = false; }
    void onSilence(std::function<void()> newIsSilent) override { isSilent = std::move(newIsSilent); }

    bool isOn = false;
    std::function<void()> isSilent;
};

struct RingBench {
    MemoryNotebook notebook;
    RingClock clock;
    RingNotifier notifier;
    RingPresence presence;
    RingSound sound;
    WrittenLog log;
    std::vector<std::string> said;
    int unheard = 0;
    std::unique_ptr<ReminderWatch> watch;

    /// As a program that starts; one that was killed before leaves nothing but its notes.
    void start()
    {
        watch = nullptr;
        watch = std::make_unique<ReminderWatch>(ReminderWatch::Ports{notebook, clock, notifier, presence, log,
            [] { return *Calendar::create("Europe/Berlin", "en_US"); },
            [this](const std::string& sentence) { said.push_back(sentence); }, nullptr, &sound, [this] { ++unheard; }});
        watch->look();
    }
    void add(const char* moment, const char* rule = nullptr, const char* mark = "ring")
    {
        notebook.list.push_back({.id = "a", .title = "Alarm", .remindAt = at(moment), .then = mark});
        if (rule)
            notebook.list.back().repeatRule = rule;
    }
    const Note& note() const { return notebook.list.front(); }
};

TEST(AlarmMark, readsWhatItWroteAndNothingElse)
{
    const AlarmMark marks[] = {{}, {.snoozedUntil = at("2026-11-22T06:54:00Z")},
        {.kind = AlarmMark::Kind::timer, .length = seconds(600)},
        {.kind = AlarmMark::Kind::timer, .length = seconds(600), .left = seconds(95)}};
    for (const AlarmMark& mark : marks)
        EXPECT_EQ(AlarmMark::fromStored(mark.stored()), mark) << mark.stored();
    for (const char* text : {"", "Ring", "ring me later", "ring timer", "ring timer 0", "ring timer -5",
             "ring timer 6000000", "ring timer 10x", "ring timer 10 paused", "ring timer 10 paused 5 more",
             "ring snoozed tomorrow", "call the bank"})
        EXPECT_EQ(AlarmMark::fromStored(text), std::nullopt) << text;
}

TEST(AlarmRinging, ringsAtItsTimeUntilItIsStopped)
{
    RingBench bench;
    bench.add("2026-11-21T06:00:00Z");
    bench.start();
    EXPECT_EQ(bench.clock.alarm, at("2026-11-21T06:00:00Z"));
    bench.clock.pass(at("2026-11-21T06:00:00Z") - std::chrono::milliseconds(1));
    EXPECT_FALSE(bench.sound.isOn);
    bench.clock.pass(at("2026-11-21T06:00:00Z"));
    EXPECT_TRUE(bench.sound.isOn);
    EXPECT_TRUE(bench.notifier.open["a"].isUrgent);
    EXPECT_FALSE(bench.note().reviewed); // A crash now lets it ring on.
    bench.notifier.reports.shown("a");
    EXPECT_FALSE(bench.note().reviewed);
    bench.sound.isSilent();
    EXPECT_EQ(bench.unheard, 1);
    bench.notifier.reports.actionTaken("a", AlarmRinging::stopKey);
    EXPECT_FALSE(bench.sound.isOn);
    EXPECT_TRUE(bench.notifier.open.empty());
    EXPECT_FALSE(ReminderState::isPending(bench.note()));
    bench.start();
    bench.clock.pass(at("2026-11-22T06:00:00Z"));
    EXPECT_FALSE(bench.sound.isOn);
}

TEST(AlarmRinging, givesUpAndSaysSo)
{
    RingBench bench;
    bench.add("2026-11-21T06:00:00Z", "daily");
    bench.start();
    bench.clock.pass(at("2026-11-21T06:09:59Z"));
    EXPECT_TRUE(bench.sound.isOn);
    bench.clock.pass(at("2026-11-21T06:10:00Z"));
    EXPECT_FALSE(bench.sound.isOn);
    EXPECT_EQ(bench.notifier.open["a"].title, "Missed: Alarm");
    ASSERT_EQ(bench.said.size(), 2U);
    EXPECT_TRUE(bench.said.back().starts_with("You missed an alarm: Alarm.")) << bench.said.back();
    bench.start(); // It is told once.
    EXPECT_EQ(bench.said.size(), 2U);
    bench.clock.pass(at("2026-11-22T06:00:00Z"));
    EXPECT_TRUE(bench.sound.isOn);
}

TEST(AlarmRinging, tellsAFloodTogether)
{
    RingBench bench;
    for (int alarm = 0; alarm < 3000; ++alarm) {
        bench.add("2026-11-21T06:00:00Z");
        bench.notebook.list.back().id = std::to_string(alarm);
    }
    bench.start();
    bench.clock.pass(at("2026-11-21T06:00:00Z"));
    EXPECT_TRUE(bench.sound.isOn);
    ASSERT_EQ(bench.said.size(), AlarmRinging::mostAtOnce + 1);
    EXPECT_TRUE(bench.said.back().starts_with("2990 reminders came due:")) << bench.said.back();
}

TEST(AlarmRinging, survivesEndsOfTheProgramAndSleep)
{
    const std::tuple<const char*, const char*, bool> rows[] = {
        {"ran on time", "2026-11-21T06:00:20Z", true},
        {"just in time", "2026-11-21T06:04:59Z", true},
        {"too late", "2026-11-21T06:05:00Z", false},
        {"hours late", "2026-11-21T11:00:00Z", false},
    };
    for (const auto& [name, startedAt, rings] : rows) {
        SCOPED_TRACE(name);
        RingBench bench;
        bench.add("2026-11-21T06:00:00Z");
        bench.clock.time = at(startedAt);
        bench.start();
        EXPECT_EQ(bench.sound.isOn, rings);
        EXPECT_EQ(bench.said.size(), 1U);
        EXPECT_EQ(bench.said.front().starts_with("You missed"), !rings);
        bench.clock.pass(at("2026-11-21T12:00:00Z"));
        EXPECT_FALSE(bench.sound.isOn);
        EXPECT_TRUE(bench.said.back().starts_with("You missed")) << bench.said.back();
    }
    RingBench elsewhere; // Another program owns the notebook, and rings.
    elsewhere.notebook.owner = false;
    elsewhere.add("2026-11-21T04:59:00Z");
    elsewhere.start();
    EXPECT_FALSE(elsewhere.sound.isOn);
    EXPECT_EQ(AlarmRinging::audible(
                  elsewhere.notebook.list, elsewhere.clock.time, *Calendar::create("Europe/Berlin", "en_US"))
                  .size(),
        1U);
}

/// One that repeats keeps its own hour, however often it is snoozed.
TEST(AlarmRinging, ringsAgainAfterASnooze)
{
    for (const char* rule : {static_cast<const char*>(nullptr), "daily"}) {
        SCOPED_TRACE(rule ? rule : "once");
        RingBench bench;
        bench.add("2026-11-21T06:00:00Z", rule);
        bench.start();
        bench.clock.pass(at("2026-11-21T06:01:00Z"));
        for (int round = 1; round <= 2; ++round) {
            bench.notifier.reports.actionTaken("a", AlarmRinging::snoozeKey);
            EXPECT_FALSE(bench.sound.isOn);
            bench.start(); // Across an end of the program, too.
            bench.clock.pass(at("2026-11-21T06:01:00Z") + minutes(10 * round) - seconds(1));
            EXPECT_FALSE(bench.sound.isOn);
            bench.clock.pass(at("2026-11-21T06:01:00Z") + minutes(10 * round));
            EXPECT_TRUE(bench.sound.isOn);
        }
        bench.notifier.reports.actionTaken("a", AlarmRinging::stopKey);
        EXPECT_FALSE(bench.sound.isOn);
        bench.clock.pass(at("2026-11-22T05:59:59Z"));
        EXPECT_FALSE(bench.sound.isOn);
        bench.clock.pass(at("2026-11-22T06:00:00Z"));
        EXPECT_EQ(bench.sound.isOn, rule != nullptr);
    }
}

/// By a tool, by another program, by hand.
TEST(AlarmRinging, fallsSilentWhenItsNoteIsSettled)
{
    const std::pair<const char*, std::function<void(Note&)>> rows[] = {
        {"done", [](Note& note) { note.doneAt = at("2026-11-21T06:01:00Z"); }},
        {"put off", [](Note& note) { note.remindAt = at("2026-11-21T07:00:00Z"); }},
        {"put away", [](Note& note) { note.archived = true; }},
    };
    for (const auto& [name, settle] : rows) {
        SCOPED_TRACE(name);
        RingBench bench;
        bench.add("2026-11-21T06:00:00Z");
        bench.start();
        bench.clock.pass(at("2026-11-21T06:01:00Z"));
        EXPECT_TRUE(bench.sound.isOn);
        settle(bench.notebook.list.front());
        bench.watch->look();
        EXPECT_FALSE(bench.sound.isOn);
        EXPECT_TRUE(bench.notifier.open.empty());
    }
}

} // namespace
} // namespace quorvell
