// SPDX-License-Identifier: MIT
// Catches calendar tools that answer for wrong days, change without a yes, or tell mistakes unclearly.
#include "Quorvell/tools/AgendaTools.h"

#include "FixtureTable.h"
#include "MemoryNotebook.h"
#include "Moments.h"
#include "PostQueue.h"
#include "Quorvell/agenda/CalendarFolder.h"
#include "Quorvell/session/consent/HeardWords.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

namespace quorvell {
namespace {

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
    VirtualScheduler scheduler;
    HeardWords heard{{scheduler}};
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

    /// To "tool arguments".
    std::string answer(const std::string& request)
    {
        const std::string tool = request.substr(0, request.find(' '));
        std::vector<std::string> answers;
        (*registry.owner(tool))(LiveFunctionCall::fromArgumentsText("1", tool, request.substr(tool.size() + 1), false),
            ToolReply([&](const Json& result) {
                Json shown = result;
                shown.erase("message");
                answers.push_back(dumpJson(shown));
            }));
        EXPECT_TRUE(posts.runUntil([&] { return !answers.empty(); }));
        return answers.empty() ? "no answer" : answers.front();
    }

    /// The assistant says it: the question of an answer, where that is all.
    void ask(const std::string& words)
    {
        constexpr std::string_view mark = R"("question":")";
        const std::size_t start = words.find(mark);
        heard.assistantSaid(start == words.npos
                ? words
                : words.substr(start + mark.size(), words.find('"', start + mark.size()) - start - mark.size()));
    }

    /// The user says it, a moment after the last thing that happened.
    void say(const std::string& words)
    {
        scheduler.advance(std::chrono::seconds(5));
        heard.userSaid({words, words, HeardUtterance::How::typed});
        scheduler.advance(std::chrono::seconds(5));
    }
};

TEST(AgendaTools, answerInTheUsersDays)
{
    for (const auto& [name, lines] : test::fixtureRows("tools/agenda.answers.txt", 2))
        EXPECT_EQ(AgendaBench().answer(lines[0]), lines[1]) << name << lines[0];
}

TEST(AgendaTools, sayWhatIsWrong)
{
    AgendaBench bench;
    for (const auto& [name, lines] : test::fixtureRows("tools/agenda.mistakes.txt", 2)) {
        const std::string answer = bench.answer(lines[0]);
        EXPECT_TRUE(answer.starts_with(R"({"error":)") && answer.find(lines[1]) != answer.npos) << lines[0] << answer;
    }
}

TEST(AgendaTools, callNothingFreeThatWasNotRead)
{
    AgendaBench bench;
    for (int index = 0; index < 3; ++index) // More than one answer holds.
        bench.write("hourly" + std::to_string(index),
            "SUMMARY:Bell\nDTSTART:20261122T0" + std::to_string(index) + "3000Z\nRRULE:FREQ=HOURLY");
    const std::string stretch = R"("from":"2026-11-22","to":"2027-11-22"})";
    const std::pair<std::string, const char*> rows[] = {
        {R"(find_free_time {"minutes":45,)" + stretch, R"({"error":"When they are free is not known: )"},
        {"whats_on {" + stretch, R"("problems":[)"},
        {R"(add_event {"title":"Cruise","start":"2026-11-22","end":"2027-11-20"})", R"("problems":[)"},
    };
    for (const auto& [request, says] : rows)
        EXPECT_NE(bench.answer(request).find(says), std::string::npos) << request;
}

TEST(AgendaTools, deleteOnlyAfterTheUsersOwnYes)
{
    const std::string cancel = R"(change_event {"id":"f:lunch","cancel":true})";
    const std::string cancelChoir = R"(change_event {"id":"f:choir#20261125T180000","cancel":true})";
    const auto status = [](const std::string& answer) { return answer.substr(0, answer.find(',')); };
    const std::string asks = R"({"status":"needs_confirmation")";
    struct Row {
        const char* name;
        std::vector<std::string> said; ///< After the question.
        bool isDeleted;
        std::string asked{}; ///< In place of the question.
    };
    const Row rows[] = {
        {"a clear yes", {"yes please delete it"}, true},
        {"a yes in the words of the question", {"yes, delete lunch on sunday"}, true},
        {"a yes to more than was asked", {"yes, delete everything"}, false},
        {"nothing at all", {}, false},
        {"a no", {"no, keep it"}, false},
        {"a yes that is taken back", {"yes", "no wait"}, false},
        {"a hesitation", {"yes but not yet"}, false},
        {"a yes that is borrowed", {"yes please"}, false, "Would you like to hear the weather?"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        AgendaBench bench;
        bench.say("yes"); // To something else, before.
        const std::string first = bench.answer(cancel);
        EXPECT_EQ(status(first), asks);
        EXPECT_NE(first.find(R"("question":"Shall I delete “Lunch” on Sunday 22 November at 12 PM?")"), first.npos);
        bench.ask(row.asked.empty() ? first : row.asked);
        for (const std::string& words : row.said)
            bench.say(words);
        const std::string second = bench.answer(cancel);
        EXPECT_EQ(status(second), row.isDeleted ? R"({"status":"deleted")" : asks);
    }

    AgendaBench other; // A yes to one question is none to another, and none for ever.
    other.ask(other.answer(cancel));
    other.say("yes");
    const std::string question = other.answer(cancelChoir);
    EXPECT_EQ(status(question), asks);
    other.ask(question);
    other.say("yes");
    other.scheduler.advance(std::chrono::minutes(6));
    EXPECT_EQ(status(other.answer(cancelChoir)), asks);
    other.ask(question);
    other.say("yes, do it");
    EXPECT_EQ(status(other.answer(cancelChoir)), R"({"status":"deleted")");
    EXPECT_NE(other.answer(R"(whats_on {"from":"2026-12-02"})").find("Choir"), std::string::npos);
}

} // namespace
} // namespace quorvell
