// SPDX-License-Identifier: MIT
// Catches reminders that are due too early, stay when done, or lose their repeat.
#include "QuorvellCore/reminders/state/ReminderState.h"

#include "QuorvellCore/reminders/state/ReminderChoices.h"
#include "QuorvellCore/reminders/state/ReminderTrigger.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

const Instant noon = *parseIsoText("2026-11-21T12:00:00Z");
const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");

Note reminder(std::optional<Instant> remindAt)
{
    return {.id = "a", .remindAt = remindAt};
}

template <typename Change> Note changed(Note note, const Change& change)
{
    change(note);
    return note;
}

TEST(ReminderState, pendingAndDue)
{
    const auto waiting = changed(reminder(noon - 1h), [](Note& note) { note.trigger = "back_at_mac"; });
    const std::tuple<const char*, Note, bool, bool> rows[] = {
        {"due on the dot", reminder(noon), true, true},
        {"ahead", reminder(noon + 1ms), true, false},
        {"no time", reminder({}), false, false},
        {"archived", changed(reminder(noon), [](Note& note) { note.archived = true; }), false, false},
        {"done before its time", changed(reminder(noon), [](Note& note) { note.doneAt = noon - 1ms; }), true, true},
        {"done at its time", changed(reminder(noon), [](Note& note) { note.doneAt = noon; }), false, false},
        {"the written-out trigger", changed(reminder(noon), [](Note& note) { note.trigger = "time"; }), true, true},
        {"waits for the return", waiting, true, false},
        {"waits, without a time", changed(waiting, [](Note& note) { note.remindAt.reset(); }), true, false},
        {"waited, done", changed(waiting, [](Note& note) { note.doneAt = noon - 2h; }), false, false},
        {"waits, archived", changed(waiting, [](Note& note) { note.archived = true; }), false, false},
    };
    for (const auto& [name, note, pending, due] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(ReminderState::isPending(note), pending);
        EXPECT_EQ(ReminderState::isDue(note, noon), due);
    }
}

TEST(ReminderState, doneMovesRepeatsOn)
{
    const struct Row {
        const char* name;
        const char* rule;
        const char* remindAt;
        const char* next; ///< Empty when none is left.
    } rows[] = {
        {"no rule", "", "2026-11-21T08:00:00.000Z", "2026-11-21T08:00:00.000Z"},
        {"an unreadable rule", "hourly", "2026-11-21T08:00:00.000Z", "2026-11-21T08:00:00.000Z"},
        {"daily", "daily", "2026-11-21T08:00:00.000Z", "2026-11-22T08:00:00.000Z"},
        {"done early: the one after it", "daily", "2026-11-21T13:00:00.000Z", "2026-11-22T13:00:00.000Z"},
        {"a few days late", "daily", "2026-11-17T13:00:00.000Z", "2026-11-21T13:00:00.000Z"},
        {"ignored for months", "daily", "2026-07-01T13:00:00.000Z", "2026-11-21T14:00:00.000Z"},
        {"ignored weekly", "weekly:6", "2026-07-03T07:00:00.000Z", "2026-11-27T08:00:00.000Z"},
        {"ignored weekly, later today", "weekly:7", "2026-07-04T13:00:00.000Z", "2026-11-21T14:00:00.000Z"},
        {"ignored weekdays", "weekdays", "2025-01-01T08:00:00.000Z", "2026-11-23T08:00:00.000Z"},
        {"ignored monthly", "monthly:31", "2026-01-31T08:00:00.000Z", "2026-11-30T08:00:00.000Z"},
        {"ignored yearly", "yearly", "2020-02-29T08:00:00.000Z", "2027-02-28T08:00:00.000Z"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Note note = reminder(parseIsoText(row.remindAt));
        if (*row.rule)
            note.repeatRule = row.rule;
        ReminderState::done(note, noon, calendar);
        EXPECT_EQ(note.doneAt, noon);
        EXPECT_EQ(note.remindAt ? isoText(*note.remindAt) : "", row.next);
        EXPECT_EQ(ReminderState::isPending(note), note.remindAt > noon);
    }
    Note timeless = changed(reminder({}), [](Note& note) { note.repeatRule = "daily"; });
    ReminderState::done(timeless, noon, calendar);
    EXPECT_EQ(timeless.remindAt, std::nullopt);
}

TEST(ReminderState, laterWhenBackAndCameBack)
{
    Note note = changed(reminder(noon - 1h), [](Note& changing) { changing.doneAt = noon; });
    ReminderState::later(note, noon + 1h);
    EXPECT_EQ(note.doneAt, noon) << "a done mark before the new time does no harm";
    ReminderState::later(note, noon);
    EXPECT_EQ(note.doneAt, std::nullopt);

    note.doneAt = noon - 2h;
    ReminderState::whenBack(note);
    EXPECT_EQ(note.trigger, "back_at_mac");
    EXPECT_EQ(note.doneAt, std::nullopt);
    EXPECT_EQ(note.remindAt, noon);

    Note returned = note;
    ReminderState::cameBack(returned, noon + 3h);
    EXPECT_EQ(returned.trigger, std::nullopt);
    EXPECT_TRUE(ReminderState::isDue(returned, noon + 3h));

    ReminderState::later(note, noon + 2h);
    EXPECT_EQ(note.trigger, std::nullopt);
    const Note timed = note;
    ReminderState::cameBack(note, noon + 9h);
    EXPECT_EQ(note, timed);
    EXPECT_EQ(reminderTrigger("time"), ReminderTrigger::time);
    EXPECT_EQ(reminderTrigger("Time"), std::nullopt);
}

TEST(ReminderChoices, eveningIsOfferedOnlyWhileFarOff)
{
    struct Row {
        const char* now; ///< Berlin's winter clock is an hour ahead of these, its summer clock two.
        std::vector<std::string> choices;
    };
    const std::vector<std::string> early = {
        "In 10 minutes, 4:39 PM", "In an hour, 5:29 PM", "This evening, 6 PM", "Tomorrow morning, Sun 22 Nov, 9 AM"};
    const Row rows[] = {
        {"2026-11-21T15:29:59.999Z", early},
        {"2026-11-21T15:30:00.000Z",
            {"In 10 minutes, 4:40 PM", "In an hour, 5:30 PM", "Tomorrow morning, Sun 22 Nov, 9 AM"}},
        {"2026-10-24T21:55:00.000Z", // the clocks go back in the night that follows
            {"In 10 minutes, Sun 25 Oct, 12:05 AM", "In an hour, Sun 25 Oct, 12:55 AM",
                "Tomorrow morning, Sun 25 Oct, 9 AM"}},
    };
    for (const Row& row : rows) {
        std::vector<std::string> choices;
        for (const ReminderChoice& choice : ReminderChoices::later(*parseIsoText(row.now), calendar, "en_US"))
            choices.push_back(choice.title + ", " + choice.detail);
        EXPECT_EQ(choices, row.choices);
    }
    const auto offered = ReminderChoices::later(*parseIsoText("2026-11-21T12:00:07.500Z"), calendar, "en_US");
    EXPECT_EQ(isoText(offered[0].date), "2026-11-21T12:10:07.500Z");
    EXPECT_EQ(isoText(offered[2].date), "2026-11-21T17:00:00.000Z");
    EXPECT_EQ(isoText(offered[3].date), "2026-11-22T08:00:00.000Z");
}

} // namespace
} // namespace quorvell
