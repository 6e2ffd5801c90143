// SPDX-License-Identifier: MIT
// Catches a time guessed by set_reminder, and a reminder stored where a question was due.
#include "Quorvell/tools/reminders/ReminderTools.h"

#include "FixtureTable.h"
#include "MemoryNotebook.h"
#include "Quorvell/tools/reminders/ReminderChanges.h"
#include "QuorvellCore/reminders/state/ReminderState.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {
namespace {

struct ReminderBench {
    MemoryNotebook notebook;
    ToolRegistry registry;
    std::vector<std::string> answers;

    ReminderBench()
    {
        registerReminderTools(registry, notebook,
            {.now = [] { return *parseIsoText("2026-11-21T09:30:00Z"); }, // Saturday, 10:30 in Berlin.
                .calendar = *Calendar::create("Europe/Berlin", "en_US"),
                .newID = [] { return "0123456789ab"; }});
    }

    void call(const std::string& arguments)
    {
        (*registry.owner("set_reminder"))(LiveFunctionCall::fromArgumentsText("1", "set_reminder", arguments, false),
            ToolReply([this](const Json& result) { answers.push_back(dumpJson(result)); }));
    }

    /// The answer without its message to the model, whose words are nobody's contract.
    std::string answer(const std::string& arguments)
    {
        answers.clear();
        call(arguments);
        EXPECT_EQ(answers.size(), 1U);
        auto result = answers.empty() ? std::nullopt : parseJson(answers.front());
        if (!result)
            return "no answer";
        const std::string status = readString(*result, "status").value_or("");
        EXPECT_EQ(result->contains("message"), status.starts_with("needs") || status.starts_with("which"));
        result->erase("message");
        return dumpJson(*result);
    }
};

TEST(ReminderTools, setsWhatIsSettled)
{
    for (const auto& [name, lines] : test::fixtureRows("tools/reminders.set.txt", 3)) {
        SCOPED_TRACE(lines[0]);
        ReminderBench bench;
        EXPECT_EQ(bench.answer(lines[0]), lines[1]);
        ASSERT_EQ(bench.notebook.list.size(), 1U);
        const Note& note = bench.notebook.list.front();
        EXPECT_EQ(
            isoText(note.remindAt.value_or(Instant())) + (note.repeatRule ? " " + *note.repeatRule : ""), lines[2]);
        EXPECT_TRUE(ReminderState::isPending(note));
        EXPECT_EQ(note.author, NoteAuthor::quorvell);
        EXPECT_EQ(note.origin, NoteOrigin::conversation);
        EXPECT_EQ(isoText(note.created), "2026-11-21T09:30:00.000Z");
        EXPECT_EQ(note.updated, note.created);
    }
}

TEST(ReminderTools, asksAndStoresNothing)
{
    for (const auto& [name, lines] : test::fixtureRows("tools/reminders.asked.txt", 2)) {
        ReminderBench bench;
        EXPECT_EQ(bench.answer(lines[0]), lines[1]) << lines[0];
        EXPECT_TRUE(bench.notebook.list.empty());
    }
}

/// A notebook with an overdue, a coming, a repeating and a waiting reminder, one that is done and one put away.
void fill(ReminderBench& bench)
{
    const auto add = [&](const char* id, const char* title, const char* remindAt) -> Note& {
        Note note;
        note.id = id;
        note.title = title;
        if (const auto moment = parseIsoText(remindAt))
            note.remindAt = moment;
        bench.notebook.list.push_back(note);
        return bench.notebook.list.back();
    };
    add("late", "Call the dentist", "2026-11-20T16:00:00Z");
    add("done", "Call the bank", "2026-11-20T16:00:00Z").doneAt = parseIsoText("2026-11-20T17:00:00Z");
    add("away", "Call nobody", "2026-11-23T16:00:00Z").archived = true;
    add("soon", "Call mum", "2026-11-22T16:00:00Z").origin = NoteOrigin::screen;
    add("daily", "Take the pills", "2026-11-22T08:00:00Z").repeatRule = "daily";
    add("back", "Water the plants", "").trigger = "back_at_mac";
}

TEST(ReminderTools, listsFinishesAndPutsOff)
{
    for (const auto& [name, lines] : test::fixtureRows("tools/reminders.changed.txt", 2)) {
        SCOPED_TRACE(lines[0]);
        ReminderBench bench;
        fill(bench);
        EXPECT_EQ(bench.answer(lines[0]), lines[1]);
        if (lines[1].starts_with(R"({"status":"done")") && lines[1].find("next") == std::string::npos) {
            EXPECT_EQ(pendingReminders(bench.notebook.list, ReminderAudience::user).size(), 3U);
        }
    }
    ReminderBench several;
    fill(several);
    EXPECT_TRUE(
        several.answer(R"({"done":true,"task":"call"})").starts_with(R"({"status":"which_reminder","count":2,)"));
    several.notebook.refusal = "The disk is full. Free some space.";
    EXPECT_EQ(
        several.answer(R"({"text":"tomorrow at noon eat"})"), R"({"error":"The disk is full. Free some space."})");
}

TEST(ReminderTools, saysWhatIsWrong)
{
    auto rows = test::fixtureRows("tools/reminders.mistakes.txt", 2);
    rows.push_back({"", {R"({"text":")" + std::string(3000, 'a') + "\"}", "text is too long"}});
    rows.push_back({"", {R"({"text":"tomorrow )" + std::string(600, 'a') + "\"}", "the task is too long"}});
    for (const auto& [name, lines] : rows) {
        ReminderBench bench;
        fill(bench);
        const auto before = bench.notebook.list;
        const std::string answer = bench.answer(lines[0]);
        EXPECT_TRUE(answer.starts_with(R"({"error":"Nothing was )") && answer.find(lines[1]) != answer.npos)
            << lines[0] << answer;
        EXPECT_EQ(bench.notebook.list, before);
    }
}

/// Whatever is put together, there is one answer; and what is refused or asked about has changed nothing.
TEST(ReminderTools, answerEveryCombination)
{
    const std::string members[] = {R"("text":"tomorrow at noon eat")", R"("task":"pills")",
        R"("date":"2026-11-23 10:00")", R"("repeat":"weekly:2")", R"("when_back":true)", R"("list":true)",
        R"("id":"daily")", R"("done":true)", R"("cancel":true)", R"("series":true)", R"("later":"in an hour")"};
    for (unsigned chosen = 0; chosen < 1U << std::size(members); ++chosen) {
        std::string arguments;
        for (std::size_t index = 0; index < std::size(members); ++index)
            if ((chosen >> index & 1U) != 0)
                arguments += (arguments.empty() ? "{" : ",") + members[index];
        SCOPED_TRACE(arguments);
        ReminderBench bench;
        fill(bench);
        const auto before = bench.notebook.list;
        const auto answer = parseJson(bench.answer(arguments.empty() ? "{}" : arguments + "}"));
        ASSERT_TRUE(answer);
        const std::string status = readString(*answer, "status").value_or("");
        const bool isChange = status == "set" || status == "done" || status == "deferred";
        EXPECT_NE(status.empty(), readString(*answer, "error").value_or("").empty());
        EXPECT_EQ(bench.notebook.list != before, isChange);
    }
}

} // namespace
} // namespace quorvell
