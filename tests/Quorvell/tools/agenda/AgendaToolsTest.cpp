// SPDX-License-Identifier: MIT
// Catches calendar tools that answer for wrong days, change without a yes, or tell mistakes unclearly.
#include "Quorvell/tools/agenda/AgendaTools.h"

#include "FixtureTable.h"
#include "MemoryNotebook.h"
#include "Moments.h"
#include "PostQueue.h"
#include "Quorvell/agenda/CalendarFolder.h"
#include "Quorvell/session/consent/HeardWords.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

#include <filesystem>
#include <map>

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
    UndoBook undo;
    ToolRegistry registry;

    AgendaBench()
    {
        const Calendar calendar = *Calendar::create("Europe/Berlin", "en_US");
        registerAgendaTools(registry, agenda, notebook,
            {[this] { return now; }, calendar, [] { return "fresh-uid"; }, &heard, {}, &undo});
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

    /// All files with their texts.
    std::map<std::string, std::string> files() const
    {
        std::map<std::string, std::string> texts;
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            texts[entry.path().filename()] = test::readText(entry.path());
        return texts;
    }

    /// Once more after the yes, where it asks.
    std::string agreedAnswer(const std::string& request)
    {
        std::string first = answer(request);
        if (!first.starts_with(R"({"status":"needs_confirmation")"))
            return first;
        ask(first);
        say("yes");
        return answer(request);
    }

    std::string token; ///< With which the last answer can be taken back.

    /// To "tool arguments".
    std::string answer(const std::string& request)
    {
        const std::string tool = request.substr(0, request.find(' '));
        std::vector<std::string> answers;
        (*registry.owner(tool))(LiveFunctionCall::fromArgumentsText("1", tool, request.substr(tool.size() + 1), false),
            ToolReply([&](const Json& result) {
                Json shown = result;
                shown.erase("message");
                token = readString(result, "undo").value_or("");
                shown.erase("undo");
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

TEST(AgendaTools, findWhatIsSpelledNearlySo)
{
    struct Row {
        const char* words;
        const char* found; ///< Of Lunch, Holiday and Choir the first letters.
    };
    const Row rows[] = {
        {"lunch", "L"},
        {"lunhc", "L"},
        {"hollday", "H"},
        {"chior", "C"},
        {"choirs holidy", "CH"},
        {"here dentist", "L"},
        {"dinner", ""},
        {"hol", "H"},
        {"ch o", ""},
    };
    for (const Row& row : rows) {
        AgendaBench bench;
        const std::string told = bench.answer(
            R"(whats_on {"from":"2026-11-21","to":"2027-11-21","words":")" + std::string(row.words) + "\"}");
        for (const char* title : {"Lunch", "Holiday", "Choir"})
            EXPECT_EQ(told.find(title) != std::string::npos,
                std::string_view(row.found).find(*title) != std::string_view::npos)
                << row.words << ": " << told;
    }
}

TEST(AgendaTools, takeBackExactlyWhatTheyDid)
{
    const std::string two = R"(BEGIN:VCALENDAR
VERSION:2.0
X-OTHER:kept
BEGIN:VEVENT
UID:two-a
SUMMARY:First
X-COLOUR:red
DTSTART:20261124T110000Z
DTEND:20261124T120000Z
END:VEVENT
BEGIN:VEVENT
UID:two-b
SUMMARY:Second
DTSTART:20261125T110000Z
DTEND:20261125T120000Z
END:VEVENT
END:VCALENDAR
)";
    for (const char* request :
        {
            R"(add_event {"title":"Walk","start":"2026-11-24 09:00"})",
            R"(change_event {"id":"f:lunch","changes":{"start":"2026-11-24 15:00","title":"Late lunch","place":""}})",
            R"(change_event {"id":"f:choir#20261125T180000","changes":{"start":"2026-11-26 19:00"}})",
            R"(change_event {"id":"f:choir#20261125T180000","changes":{"start":"2026-11-26 19:00"},"series":true})",
            R"(change_event {"id":"f:lunch","cancel":true})",
            R"(change_event {"id":"f:two-a","cancel":true})",
            R"(change_event {"id":"f:choir#20261125T180000","cancel":true})",
            R"(change_event {"id":"f:choir#20261125T180000","cancel":true,"series":true})",
            R"(change_event {"ids":["f:two-a","f:lunch","f:choir#20261125T180000","f:choir#20261202T180000"],"cancel":true})",
        }) {
        SCOPED_TRACE(request);
        AgendaBench bench;
        test::writeText(bench.folder / "two.ics", two);
        const auto before = bench.files();
        EXPECT_EQ(bench.agreedAnswer(request).find("error"), std::string::npos);
        EXPECT_NE(bench.files(), before);
        const std::string tool(request, std::string_view(request).find(' '));
        const std::string back = tool + R"( {"undo":")" + bench.token + R"("})";
        EXPECT_TRUE(bench.answer(back).starts_with(R"({"status":"undone","what":")"));
        EXPECT_EQ(bench.files(), before);
        EXPECT_TRUE(bench.answer(back).starts_with(R"({"error":)")); // Once.
    }
}

TEST(AgendaTools, takeNothingBackThatOtherHandsChanged)
{
    AgendaBench bench;
    const auto takeBack = [&](const std::string& token) {
        return bench.answer(R"(change_event {"undo":")" + token + R"("})");
    };
    bench.answer(R"(change_event {"id":"f:lunch","changes":{"title":"Mine"}})");
    const std::string first = bench.token;
    bench.answer(R"(change_event {"id":"f:lunch","changes":{"place":"There"}})");
    EXPECT_NE(takeBack(first).find("changed since then"), std::string::npos);
    bench.agreedAnswer(R"(change_event {"id":"f:holiday","cancel":true})");
    const std::string removed = bench.token;
    bench.write("holiday", "SUMMARY:Other\nDTSTART;VALUE=DATE:20261123\nDTEND;VALUE=DATE:20261125");
    EXPECT_NE(takeBack(removed).find("changed since then"), std::string::npos);
    EXPECT_NE(bench.answer("whats_on {\"from\":\"2026-11-23\"}").find("Other"), std::string::npos);

    // In a large file the event alone is kept in mind.
    std::string large = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
    for (int index = 0; index < 900; ++index)
        large += "BEGIN:VEVENT\r\nUID:large-" + std::to_string(index)
            + "\r\nSUMMARY:One of very many events\r\nDTSTART:20250301T100000Z\r\nEND:VEVENT\r\n";
    test::writeText(bench.folder / "large.ics", large + "END:VCALENDAR\r\n");
    bench.agreedAnswer(R"(change_event {"id":"f:large-7","cancel":true})");
    EXPECT_EQ(bench.files()["large.ics"].find("large-7\r"), std::string::npos);
    EXPECT_TRUE(takeBack(bench.token).starts_with(R"({"status":"undone")"));
    EXPECT_NE(bench.files()["large.ics"].find("large-7\r"), std::string::npos);

    // Another event of the same file is no hindrance, and stays.
    bench.answer(R"(add_event {"title":"Walk","start":"2026-11-27 09:00"})");
    const std::string added = bench.token;
    const std::string text = test::readText(bench.folder / "fresh-uid.ics");
    const std::string other = "BEGIN:VEVENT\r\nUID:x\r\nSUMMARY:Swim\r\nDTSTART:20261127T100000Z\r\nEND:VEVENT\r\n";
    test::writeText(bench.folder / "fresh-uid.ics", std::string(text).insert(text.find("BEGIN:VEVENT"), other));
    EXPECT_TRUE(takeBack(added).starts_with(R"({"status":"undone")"));
    const std::string day = bench.answer("whats_on {\"from\":\"2026-11-27\"}");
    EXPECT_EQ(day.find("Walk"), std::string::npos);
    EXPECT_NE(day.find("Swim"), std::string::npos);
}

} // namespace
} // namespace quorvell
