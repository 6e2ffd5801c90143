// SPDX-License-Identifier: MIT
// Catches calendar tools that answer for wrong days, change without a yes, or tell mistakes unclearly.
#include "Quorvell/tools/AgendaTools.h"

#include "MemoryNotebook.h"
#include "PostQueue.h"
#include "Quorvell/agenda/CalendarFolder.h"
#include "Quorvell/tools/HeardWords.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {
namespace {

Instant at(const std::string& iso)
{
    return parseIsoText(iso).value_or(Instant());
}

std::vector<std::unique_ptr<CalendarSource>> folderSource(const std::string& path)
{
    std::vector<std::unique_ptr<CalendarSource>> sources;
    sources.push_back(std::make_unique<CalendarFolder>(path));
    return sources;
}

/// A calendar with lunch on Sunday, a holiday on Monday and choir every Wednesday; a reminder that is overdue.
struct AgendaBench {
    test::TemporaryFolder folder;
    test::PostQueue posts;
    Agenda agenda{folderSource(folder.path()), posts.poster()};
    MemoryNotebook notebook;
    Instant now = at("2026-11-21T09:30:00Z"); // Saturday, 10:30 in Berlin.
    HeardWords heard{[this] { return now; }};
    ToolRegistry registry;

    AgendaBench()
    {
        const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");
        registerAgendaTools(
            registry, agenda, notebook, {[this] { return now; }, calendar, [] { return "fresh-uid"; }, &heard});
        write("lunch", "SUMMARY:Lunch\nLOCATION:Here\nDTSTART:20261122T110000Z\nDTEND:20261122T120000Z");
        write("holiday", "SUMMARY:Holiday\nDTSTART;VALUE=DATE:20261123\nDTEND;VALUE=DATE:20261125");
        write("choir",
            "SUMMARY:Choir\nDTSTART;TZID=Europe/Berlin:20261104T180000\nDURATION:PT90M\nRRULE:FREQ=WEEKLY;COUNT=6");
        Note note;
        note.id = "pay";
        note.title = "Pay rent";
        note.remindAt = at("2026-11-20T08:00:00Z");
        notebook.list.push_back(note);
    }

    void write(const std::string& uid, const std::string& lines) const
    {
        test::writeText(folder / (uid + ".ics"),
            "BEGIN:VCALENDAR\nVERSION:2.0\nPRODID:x\nBEGIN:VEVENT\nUID:" + uid + "\n" + lines
                + "\nEND:VEVENT\nEND:VCALENDAR\n");
    }

    std::string answer(const std::string& tool, const std::string& arguments)
    {
        std::vector<std::string> answers;
        (*registry.owner(tool))(
            LiveFunctionCall::fromArgumentsText("1", tool, arguments, false), ToolReply([&](const Json& result) {
                Json shown = result;
                shown.erase("message");
                answers.push_back(dumpJson(shown));
            }));
        EXPECT_TRUE(posts.runUntil([&] { return !answers.empty(); }));
        return answers.empty() ? "no answer" : answers.front();
    }

    /// The user says it, a moment after the last thing that happened.
    void say(const std::string& words)
    {
        now += std::chrono::seconds(5);
        heard.userSaid(words, SessionObserver::Words::spoken);
        now += std::chrono::seconds(5);
    }
};

const std::string lunch = R"("id":"f:lunch","title":"Lunch","start":"2026-11-22 12:00","end":"2026-11-22 13:00",)"
                          R"("when":"Sunday 22 November at 12 PM","place":"Here")";

TEST(AgendaTools, answerInTheUsersDays)
{
    struct Row {
        const char* tool;
        std::string arguments;
        std::string result;
    };
    const Row rows[] = {
        {"whats_on", "{}",
            R"({"status":"agenda","count":1,"items":[{"kind":"reminder","id":"pay","title":"Pay rent",)"
            R"("start":"2026-11-20 09:00","when":"Friday 20 November at 9 AM","overdue":true}]})"},
        {"whats_on", R"({"from":"2026-11-22","to":"2026-11-25"})",
            R"({"status":"agenda","count":3,"items":[{"kind":"event",)" + lunch + "},"
                + R"({"kind":"event","id":"f:holiday","title":"Holiday","start":"2026-11-23","end":"2026-11-24",)"
                  R"("when":"Monday 23 November to Tuesday 24 November","all_day":true},)"
                  R"({"kind":"event","id":"f:choir#20261125T180000","title":"Choir","start":"2026-11-25 18:00",)"
                  R"("end":"2026-11-25 19:30","when":"Wednesday 25 November at 6 PM","repeats":true}]})"},
        {"find_free_time", R"({"minutes":45,"from":"2026-11-22","to":"2026-11-22"})",
            R"({"status":"free","minutes":45,"slots":[)"
            R"({"start":"2026-11-22 08:00","end":"2026-11-22 12:00","when":"Sunday 22 November from 8 AM to 12 PM"},)"
            R"({"start":"2026-11-22 13:00","end":"2026-11-22 22:00","when":"Sunday 22 November from 1 PM to 10 PM"}]})"},
        {"add_event", R"({"title":"walk","start":"2026-11-22 12:30"})",
            R"({"status":"added","id":"f:fresh-uid","title":"Walk","start":"2026-11-22 12:30","end":"2026-11-22 13:30",)"
            R"("when":"Sunday 22 November at 12:30 PM","conflicts":[{)"
                + lunch + "}]}"},
        {"add_event", R"({"title":"Trip","start":"2026-11-22","end":"2026-11-24","place":"Lake"})",
            R"({"status":"added","id":"f:fresh-uid","title":"Trip","start":"2026-11-22","end":"2026-11-24",)"
            R"("when":"Sunday 22 November to Tuesday 24 November","place":"Lake","all_day":true,"conflicts":[]})"},
        {"add_event", R"({"title":"Talk","start":"2026-11-20 10:00","minutes":30})",
            R"({"status":"added","id":"f:fresh-uid","title":"Talk","start":"2026-11-20 10:00","end":"2026-11-20 10:30",)"
            R"("when":"Friday 20 November at 10 AM","conflicts":[],"past":true})"},
        {"add_event", R"({"title":"Vigil","start":"2026-10-24 22:00","end":"2026-10-25 06:00"})", // The clocks go back.
            R"({"status":"added","id":"f:fresh-uid","title":"Vigil","start":"2026-10-24 22:00","end":"2026-10-25 06:00",)"
            R"("when":"Saturday 24 October at 10 PM","conflicts":[],"past":true})"},
        {"add_event", R"({"title":"Gym","start":"2026-11-22 07:00","repeat":"weekly:3,5"})", // Tuesdays and Thursdays
            R"({"status":"added","repeat_words":"Every Tuesday and Thursday",)"
            R"("id":"f:fresh-uid","title":"Gym","start":"2026-11-24 07:00","end":"2026-11-24 08:00",)"
            R"("when":"Tuesday 24 November at 7 AM","repeats":true,"conflicts":[]})"},
        {"add_event", R"({"title":"Visit","start":"2026-11-20 08:45"})",
            R"({"status":"added","id":"f:fresh-uid","title":"Visit","start":"2026-11-20 08:45","end":"2026-11-20 09:45",)"
            R"("when":"Friday 20 November at 8:45 AM","conflicts":[],"reminders":[{"kind":"reminder","id":"pay",)"
            R"("title":"Pay rent","start":"2026-11-20 09:00","when":"Friday 20 November at 9 AM","overdue":true}],)"
            R"("past":true})"},
        {"change_event", R"({"id":"f:lunch","changes":{"start":"2026-11-27"}})",
            R"({"status":"changed","id":"f:lunch","title":"Lunch","start":"2026-11-27 12:00","end":"2026-11-27 13:00",)"
            R"("when":"Friday 27 November at 12 PM","place":"Here","conflicts":[]})"},
        {"change_event", R"({"id":"f:choir#20261125T180000","changes":{"start":"2026-11-22 12:00","title":"Sing"}})",
            R"({"status":"changed","id":"f:choir#20261125T180000","title":"Sing","start":"2026-11-22 12:00",)"
            R"("end":"2026-11-22 13:30","when":"Sunday 22 November at 12 PM","repeats":true,"conflicts":[{)"
                + lunch + "}]}"},
        {"change_event", R"({"id":"f:choir#20261125T180000","series":true,"changes":{"end":"2026-11-25 19:00"}})",
            R"({"status":"changed","id":"f:choir#20261125T180000","title":"Choir","start":"2026-11-25 18:00",)"
            R"("end":"2026-11-25 19:00","when":"Wednesday 25 November at 6 PM","repeats":true,"conflicts":[]})"},
        {"change_event", R"({"id":"f:choir#20261125T180000","series":true,"changes":{"start":"2026-11-25 20:00"}})",
            R"({"status":"changed","id":"f:choir#20261125T200000","title":"Choir","start":"2026-11-25 20:00",)"
            R"("end":"2026-11-25 21:30","when":"Wednesday 25 November at 8 PM","repeats":true,"conflicts":[]})"},
        {"change_event", R"({"id":"f:holiday","changes":{"start":"2026-11-26"}})",
            R"({"status":"changed","id":"f:holiday","title":"Holiday","start":"2026-11-26","end":"2026-11-27",)"
            R"("when":"Thursday 26 November to Friday 27 November","all_day":true,"conflicts":[]})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tool + row.arguments);
        AgendaBench bench;
        EXPECT_EQ(bench.answer(row.tool, row.arguments), row.result);
    }
}

TEST(AgendaTools, sayWhatIsWrong)
{
    struct Row {
        const char* tool;
        const char* arguments;
        const char* says;
    };
    const Row rows[] = {
        {"whats_on", R"({"from":"2026-11-22","to":"2026-11-20"})", "to must come after from"},
        {"whats_on", R"({"from":"2026-02-30"})", "from must be a day that exists"},
        {"find_free_time", R"({"minutes":1})", "from 5 to 840, for only 8:00 to 22:00 counts"},
        {"find_free_time", "{}", "minutes must be"},
        {"add_event", R"({"title":"Talk","start":"2026-11-22 10:00","end":"2026-11-22 09:00"})",
            "end before it begins"},
        {"add_event", R"({"title":"Talk","start":"2026-11-22","end":"2026-11-21"})", "end before it begins"},
        {"add_event", R"({"title":"Talk","start":"2026-11-22","end":"2062-11-22"})", "more than a year"},
        {"add_event", R"({"title":"Talk","start":"2026-11-22 10:00","end":"2026-11-23"})", "Give both a time"},
        {"add_event", R"({"title":"Talk","start":"2026-11-22 10:00","minutes":-5})", "minutes must be"},
        {"add_event", R"({"title":"Talk","start":"2026-11-22 10:00","repeat":"hourly"})", "repeat must be"},
        {"add_event", R"({"start":"2026-11-22 10:00"})", "title is missing"},
        {"add_event", R"({"title":"Talk"})", "start is missing"},
        {"change_event", R"({"id":"f:lunch","changes":{},"cancel":false})", "either changes or cancel"},
        {"change_event", R"({"id":"f:lunch","changes":{"title":"x"},"cancel":true})", "either changes or cancel"},
        {"change_event", R"({"id":"f:lunch","changes":{"end":"2026-11-22 11:00"}})", "end before it begins"},
        {"change_event", R"({"id":"f:holiday","changes":{"all_day":false}})", "has no time yet"},
        {"change_event", R"({"id":"f:nothing","changes":{"title":"x"}})", "no event with that id"},
        {"change_event", R"({"changes":{"title":"x"}})", "id is missing"},
    };
    AgendaBench bench;
    for (const Row& row : rows) {
        const std::string answer = bench.answer(row.tool, row.arguments);
        EXPECT_TRUE(answer.starts_with(R"({"error":)") && answer.find(row.says) != answer.npos)
            << row.arguments << answer;
    }
}

TEST(AgendaTools, deleteOnlyAfterTheUsersOwnYes)
{
    const std::string cancel = R"({"id":"f:lunch","cancel":true})";
    const auto status = [](const std::string& answer) { return answer.substr(0, answer.find(',')); };
    const std::string asks = R"({"status":"needs_confirmation")";
    struct Row {
        const char* name;
        std::vector<std::string> said; ///< After the question.
        bool isDeleted;
    };
    const Row rows[] = {
        {"a clear yes", {"yes please delete it"}, true},
        {"a yes in the words of the question", {"yes, delete lunch on sunday"}, true},
        {"a yes to more than was asked", {"yes, delete everything"}, false},
        {"nothing at all", {}, false},
        {"a no", {"no, keep it"}, false},
        {"a yes that is taken back", {"yes", "no wait"}, false},
        {"a hesitation", {"yes but not yet"}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        AgendaBench bench;
        bench.say("yes"); // To something else, before.
        const std::string first = bench.answer("change_event", cancel);
        EXPECT_EQ(status(first), asks);
        EXPECT_NE(first.find(R"("question":"Shall I delete “Lunch” on Sunday 22 November at 12 PM?")"), first.npos);
        for (const std::string& words : row.said)
            bench.say(words);
        const std::string second = bench.answer("change_event", cancel);
        EXPECT_EQ(status(second), row.isDeleted ? R"({"status":"deleted")" : asks);
    }

    AgendaBench other; // A yes to one question is none to another, and none for ever.
    other.answer("change_event", cancel);
    other.say("yes");
    EXPECT_EQ(status(other.answer("change_event", R"({"id":"f:choir#20261125T180000","cancel":true})")), asks);
    other.say("yes");
    other.now += std::chrono::minutes(6);
    EXPECT_EQ(status(other.answer("change_event", R"({"id":"f:choir#20261125T180000","cancel":true})")), asks);
    other.say("yes, do it");
    EXPECT_EQ(status(other.answer("change_event", R"({"id":"f:choir#20261125T180000","cancel":true})")),
        R"({"status":"deleted")");
    EXPECT_NE(other.answer("whats_on", R"({"from":"2026-12-02"})").find("Choir"), std::string::npos);
}

} // namespace
} // namespace quorvell
