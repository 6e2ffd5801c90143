// SPDX-License-Identifier: MIT
// Catches commands that tick off the wrong reminder, guess a time, or show another day.
#include "Quorvell/app/reminders/RemindersCommand.h"

#include "MemoryNotebook.h"
#include "PostQueue.h"
#include "Quorvell/agenda/CalendarFolder.h"
#include "Quorvell/app/agenda/AgendaCommand.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sstream>

namespace quorvell {
namespace {

const Calendar& berlin()
{
    static const Calendar calendar = *Calendar::create("Europe/Berlin", "en_GB");
    return calendar;
}

const Instant now = *parseIsoText("2026-11-21T09:30:00Z");

std::vector<Note> twoReminders()
{
    std::vector<Note> notes(2);
    notes[0].id = "aaaa1111";
    notes[0].title = "Call mum";
    notes[0].remindAt = parseIsoText("2026-11-22T16:00:00Z");
    notes[1].id = "aabb2222";
    notes[1].title = "Pay rent";
    notes[1].remindAt = parseIsoText("2026-11-21T08:00:00Z");
    notes[1].repeatRule = "monthly:21";
    return notes;
}

TEST(RemindersCommand, listsTicksOffAndPutsOff)
{
    using Action = RemindersRequest::Action;
    struct Row {
        RemindersRequest request;
        int exitCode;
        const char* out;
        const char* errors; ///< How they begin.
    };
    const Row rows[] = {
        {{Action::list}, 0,
            "aabb2222  Pay rent  (Saturday 21 November at 09:00, Every month on the 21st, overdue)\n"
            "aaaa1111  Call mum  (Sunday 22 November at 17:00)\n",
            ""},
        {{Action::done, "aaaa"}, 0, "Call mum: done.\n", ""},
        {{Action::done, "rent"}, 0, "Pay rent: done. Next Monday 21 December at 09:00.\n", ""},
        {{Action::later, "aabb", "this evening"}, 0, "Pay rent: put off. Next Saturday 21 November at 18:00.\n", ""},
        {{Action::later, "mum", "in an hour", true}, 0,
            "{\"status\":\"deferred\",\"id\":\"aaaa1111\",\"task\":\"Call mum\",\"date\":\"2026-11-21 11:30\","
            "\"when\":\"Saturday 21 November at 11:30\"}\n",
            ""},
        {{Action::done, "aa"}, 1, "", "Several reminders fit"},
        {{Action::done, "zz"}, 1, "", "No pending reminder"},
        {{Action::done, ""}, 1, "", "No pending reminder"}, // Pay rent is due, and not named.
        {{Action::done, " !"}, 1, "", "No pending reminder"},
        {{Action::later, "mum", "by an hour"}, 0, "Call mum: put off. Next Sunday 22 November at 18:00.\n", ""},
        {{Action::later, "mum", "at 5"}, 1, "", "\"at 5\" is not one time"},
        {{Action::later, "mum", "some day"}, 1, "", "\"some day\" is not one time"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.request.id + " " + row.request.when);
        MemoryNotebook notebook;
        notebook.list = twoReminders();
        std::ostringstream out;
        std::ostringstream errors;
        int exitCode = -1;
        runReminders(row.request, notebook, now, berlin(), out, errors, nullptr, [&](int code) { exitCode = code; });
        EXPECT_EQ(exitCode, row.exitCode);
        EXPECT_EQ(out.str(), row.out);
        EXPECT_TRUE(errors.str().starts_with(row.errors)) << errors.str();
        EXPECT_EQ(errors.str().empty(), std::string(row.errors).empty());
    }
}

TEST(RemindersCommand, asksWhichTimeIsMeant)
{
    struct Row {
        const char* typed;
        const char* remindAt; ///< Unchanged: 2026-11-22T16:00.
    };
    for (const Row& row : {Row{"2\n", "2026-11-22T17:00:00.000Z"}, {"pm\n", "2026-11-22T17:00:00.000Z"},
             {"7\nwhat\n6 in the morning\n", "2026-11-22T05:00:00.000Z"}, {"\n1\n", "2026-11-22T16:00:00.000Z"},
             {"8 pm\n0\nx\n1\n", "2026-11-22T16:00:00.000Z"}, {"", "2026-11-22T16:00:00.000Z"}}) {
        SCOPED_TRACE(row.typed);
        MemoryNotebook notebook;
        notebook.list = twoReminders();
        std::istringstream answers(row.typed);
        std::ostringstream out;
        std::ostringstream errors;
        const auto ask = [&](const auto& choices) { return askWhichTime(choices, now, berlin(), answers, out); };
        runReminders(
            {RemindersRequest::Action::later, "mum", "at 6"}, notebook, now, berlin(), out, errors, ask, [](int) {});
        EXPECT_EQ(isoText(*notebook.list.front().remindAt), row.remindAt);
        EXPECT_TRUE(out.str().starts_with("  1  Sunday 22 November at 06:00\n  2  Sunday 22 November at 18:00\nWhich"));
    }
}

TEST(AgendaCommand, showsTheDay)
{
    const test::TemporaryFolder folder;
    test::writeText(folder / "a.ics",
        "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:x\n"
        "BEGIN:VEVENT\nUID:a\nSUMMARY:Lunch\nLOCATION:Café\nDTSTART:20261121T110000Z\nDURATION:PT1H\nEND:VEVENT\n"
        "BEGIN:VEVENT\nUID:b\nSUMMARY:Fair\nDTSTART;VALUE=DATE:20261121\nDTEND;VALUE=DATE:20261123\nEND:VEVENT\n"
        "BEGIN:VEVENT\nUID:c\nSUMMARY:Night\nDTSTART:20261121T210000Z\nDURATION:PT9H\nEND:VEVENT\nEND:VCALENDAR\n");
    struct Row {
        AgendaRequest request;
        const char* out;
    };
    const Row rows[] = {
        {{AgendaRequest::Action::today},
            "Saturday 21 November\n"
            "  until 11-22  Fair\n"
            "  09:00        Reminder: Pay rent, overdue\n"
            "  12:00–13:00  Lunch (Café)\n"
            "  22:00–11-22 07:00 Night\n"},
        {{AgendaRequest::Action::free, 600, false, {std::chrono::hours(8), std::chrono::hours(17)}},
            "There is no such gap from 8:00 to 17:00 in the next seven days.\n"},
        {{AgendaRequest::Action::free, 600},
            "Sunday 22 November from 08:00 to 22:00\n"
            "Monday 23 November from 08:00 to 22:00\n"
            "Tuesday 24 November from 08:00 to 22:00\n"
            "Wednesday 25 November from 08:00 to 22:00\n"
            "Thursday 26 November from 08:00 to 22:00\n"},
    };
    test::PostQueue posts;
    std::vector<std::unique_ptr<CalendarSource>> sources;
    sources.push_back(std::make_unique<CalendarFolder>(folder.path()));
    Agenda agenda(std::move(sources), posts.poster());
    for (const Row& row : rows) {
        std::ostringstream out;
        std::ostringstream errors;
        int exitCode = -1;
        runAgenda(row.request, agenda, twoReminders(), now, berlin(), out, errors, [&](int code) { exitCode = code; });
        ASSERT_TRUE(posts.runUntil([&] { return exitCode >= 0; }));
        EXPECT_EQ(exitCode, 0) << errors.str();
        EXPECT_EQ(out.str(), row.out);
    }
}

} // namespace
} // namespace quorvell
