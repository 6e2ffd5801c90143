// SPDX-License-Identifier: MIT
// Catches a time guessed by set_reminder, and a reminder stored where a question was due.
#include "Quorvell/tools/ReminderTools.h"

#include "MemoryNotebook.h"
#include "Quorvell/tools/ReminderChanges.h"
#include "QuorvellCore/reminders/state/ReminderState.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>
#include <utility>
#include <vector>

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
    struct Row {
        const char* arguments;
        const char* result;
        const char* remindAt;
        const char* rule;
    };
    const Row rows[] = {
        {R"({"text":"remind me tomorrow at 5 pm to call the dentist"})",
            R"({"status":"set","id":"0123456789ab","task":"Call the dentist","date":"2026-11-22 17:00",)"
            R"("when":"Sunday 22 November at 5 PM","has_time":true})",
            "2026-11-22T16:00:00.000Z", ""},
        {R"({"text":"tomorrow call mum"})",
            R"({"status":"set","id":"0123456789ab","task":"Call mum","date":"2026-11-22",)"
            R"("when":"Sunday 22 November at 9 AM","has_time":false})",
            "2026-11-22T08:00:00.000Z", ""},
        {R"({"task":"call the dentist","date":"2026-11-22 05:00"})",
            R"({"status":"set","id":"0123456789ab","task":"Call the dentist","date":"2026-11-22 05:00",)"
            R"("when":"Sunday 22 November at 5 AM","has_time":true})",
            "2026-11-22T04:00:00.000Z", ""},
        {R"({"task":"buy the weekly magazine","date":"2026-11-23"})",
            R"({"status":"set","id":"0123456789ab","task":"Buy the weekly magazine","date":"2026-11-23",)"
            R"("when":"Monday 23 November at 9 AM","has_time":false})",
            "2026-11-23T08:00:00.000Z", ""},
        {R"({"text":"every monday at 8am take the bins out"})",
            R"({"status":"set","id":"0123456789ab","task":"Take the bins out","date":"2026-11-23 08:00",)"
            R"("when":"Monday 23 November at 8 AM","has_time":true,"repeat":"weekly:2","repeat_words":"Every Monday"})",
            "2026-11-23T07:00:00.000Z", "weekly:2"},
        {R"({"task":"run","date":"2026-11-20 08:00","repeat":"Daily"})",
            R"({"status":"set","id":"0123456789ab","task":"Run","date":"2026-11-22 08:00",)"
            R"("when":"Sunday 22 November at 8 AM","has_time":true,"repeat":"daily","repeat_words":"Every day"})",
            "2026-11-22T07:00:00.000Z", "daily"},
        {R"({"text":"tomorrow at noon","task":"water the plants"})",
            R"({"status":"set","id":"0123456789ab","task":"Water the plants","date":"2026-11-22 12:00",)"
            R"("when":"Sunday 22 November at 12 PM","has_time":true})",
            "2026-11-22T11:00:00.000Z", ""},
        {R"({"text":"call mum on Saturday 20 March at 8 PM"})",
            R"({"status":"set","id":"0123456789ab","task":"Call mum","date":"2027-03-20 20:00",)"
            R"("when":"Saturday 20 March at 8 PM","has_time":true})",
            "2027-03-20T19:00:00.000Z", ""},
        {R"({"text":"today at 5 call mum"})", // Five in the morning is over.
            R"({"status":"set","id":"0123456789ab","task":"Call mum","date":"2026-11-21 17:00",)"
            R"("when":"Saturday 21 November at 5 PM","has_time":true})",
            "2026-11-21T16:00:00.000Z", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        ReminderBench bench;
        EXPECT_EQ(bench.answer(row.arguments), row.result);
        ASSERT_EQ(bench.notebook.list.size(), 1U);
        const Note& note = bench.notebook.list.front();
        EXPECT_EQ(isoText(note.remindAt.value_or(Instant())), row.remindAt);
        EXPECT_EQ(note.repeatRule.value_or(""), row.rule);
        EXPECT_TRUE(ReminderState::isPending(note));
        EXPECT_EQ(note.author, NoteAuthor::quorvell);
        EXPECT_EQ(note.origin, NoteOrigin::conversation);
        EXPECT_EQ(isoText(note.created), "2026-11-21T09:30:00.000Z");
        EXPECT_EQ(note.updated, note.created);
    }
}

TEST(ReminderTools, asksAndStoresNothing)
{
    struct Row {
        const char* arguments;
        const char* result;
    };
    const Row rows[] = {
        {R"({"text":"tomorrow at 5 call the dentist"})",
            R"({"status":"which_time","task":"Call the dentist","choices":[)"
            R"({"date":"2026-11-22 05:00","when":"Sunday 22 November at 5 AM"},)"
            R"({"date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM"}]})"},
        {R"({"text":"every monday at 8 run"})",
            R"({"status":"which_time","task":"Run","choices":[)"
            R"({"date":"2026-11-23 08:00","when":"Monday 23 November at 8 AM"},)"
            R"({"date":"2026-11-23 20:00","when":"Monday 23 November at 8 PM"}],"repeat":"weekly:2"})"},
        {R"({"text":"remind me to buy milk"})", R"({"status":"needs_time","task":"Buy milk"})"},
        {R"({"task":"buy milk"})", R"({"status":"needs_time","task":"Buy milk"})"},
        {R"({"text":"31 april at 5pm pay rent"})", R"({"status":"needs_time","task":"Pay rent"})"},
        {R"({"text":"remind me on 31 april to pay rent"})", R"({"status":"needs_time","task":"Pay rent"})"},
        {R"({"text":"call mum on sunday 20 march at 8 pm"})", R"({"status":"needs_time","task":"Call mum"})"},
        {R"({"task":"pay rent","date":"2026-11-21 09:00"})",
            R"({"status":"needs_time","task":"Pay rent","past":true,"when":"Saturday 21 November at 9 AM"})"},
        {R"({"text":"tomorrow at noon"})",
            R"({"status":"needs_task","date":"2026-11-22 12:00","when":"Sunday 22 November at 12 PM"})"},
        {R"({"task":"","date":"2026-11-22","repeat":"daily"})",
            R"({"status":"needs_task","date":"2026-11-22","when":"Sunday 22 November at 9 AM","repeat":"daily"})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        ReminderBench bench;
        EXPECT_EQ(bench.answer(row.arguments), row.result);
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
    struct Row {
        const char* arguments;
        const char* result;
    };
    const Row rows[] = {
        {R"({"list":true})",
            R"({"status":"reminders","count":4,"reminders":[)"
            R"({"id":"late","task":"Call the dentist","date":"2026-11-20 17:00","when":"Friday 20 November at 5 PM",)"
            R"("overdue":true},)"
            R"({"id":"daily","task":"Take the pills","date":"2026-11-22 09:00","when":"Sunday 22 November at 9 AM",)"
            R"("repeat_words":"Every day"},)"
            R"({"id":"soon","task":"Call mum","date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM",)"
            R"("untrusted":true},)"
            R"({"id":"back","task":"Water the plants","when":"when you are back at the computer","when_back":true}]})"},
        {R"({"done":true})", R"({"status":"done","id":"late","task":"Call the dentist"})"},
        {R"({"done":true,"task":"dentist"})", R"({"status":"done","id":"late","task":"Call the dentist"})"},
        {R"({"done":true,"task":"the dentist reminder"})",
            R"({"status":"done","id":"late","task":"Call the dentist"})"},
        {R"({"done":true,"id":"soon"})", R"({"status":"done","id":"soon","task":"Call mum"})"},
        {R"({"done":true,"id":"back"})", R"({"status":"done","id":"back","task":"Water the plants"})"},
        {R"({"done":true,"task":"pills"})",
            R"({"status":"done","id":"daily","task":"Take the pills","next":"Monday 23 November at 9 AM"})"},
        {R"({"later":"In an hour"})",
            R"({"status":"deferred","id":"late","task":"Call the dentist","date":"2026-11-21 11:30",)"
            R"("when":"Saturday 21 November at 11:30 AM"})"},
        {R"({"later":"tomorrow morning","id":"back"})",
            R"({"status":"deferred","id":"back","task":"Water the plants","date":"2026-11-22 09:00",)"
            R"("when":"Sunday 22 November at 9 AM"})"},
        {R"({"later":"friday at 3 pm","task":"mum"})",
            R"({"status":"deferred","id":"soon","task":"Call mum","date":"2026-11-27 15:00",)"
            R"("when":"Friday 27 November at 3 PM"})"},
        {R"({"later":"until friday the 27th at 3 pm","task":"mum"})",
            R"({"status":"deferred","id":"soon","task":"Call mum","date":"2026-11-27 15:00",)"
            R"("when":"Friday 27 November at 3 PM"})"},
        {R"({"later":"by ten minutes","task":"mum"})",
            R"({"status":"deferred","id":"soon","task":"Call mum","date":"2026-11-22 17:10",)"
            R"("when":"Sunday 22 November at 5:10 PM"})"},
        {R"({"later":"by an hour"})",
            R"({"status":"deferred","id":"late","task":"Call the dentist","date":"2026-11-21 11:30",)"
            R"("when":"Saturday 21 November at 11:30 AM"})"},
        {R"({"later":"tomorrow at 5","task":"mum"})",
            R"({"status":"which_time","task":"Call mum","choices":[)"
            R"({"date":"2026-11-22 05:00","when":"Sunday 22 November at 5 AM"},)"
            R"({"date":"2026-11-22 17:00","when":"Sunday 22 November at 5 PM"}],"id":"soon"})"},
        {R"({"later":"2026-12-09 19:00","id":"soon"})", // As a follow-up settled it.
            R"({"status":"deferred","id":"soon","task":"Call mum","date":"2026-12-09 19:00",)"
            R"("when":"Wednesday 9 December at 7 PM"})"},
        {R"({"later":"6 pm","task":"mum"})", // The day stays.
            R"({"status":"deferred","id":"soon","task":"Call mum","date":"2026-11-22 18:00",)"
            R"("when":"Sunday 22 November at 6 PM"})"},
        {R"({"later":"2026-11-22 20:00","id":"daily"})", // It goes on to repeat.
            R"({"status":"deferred","id":"daily","task":"Take the pills","date":"2026-11-22 20:00",)"
            R"("when":"Sunday 22 November at 8 PM","repeat":"daily","repeat_words":"Every day"})"},
        {R"({"later":"a bit later"})", // As "In an hour" of the buttons, whatever that is called.
            R"({"status":"deferred","id":"late","task":"Call the dentist","date":"2026-11-21 11:30",)"
            R"("when":"Saturday 21 November at 11:30 AM"})"},
        {R"({"later":"some day","task":"mum"})", R"({"status":"needs_time","task":"Call mum","id":"soon"})"},
        {R"({"id":"soon","date":"2026-11-23 10:00","task":"call dad"})",
            R"({"status":"set","id":"soon","task":"Call dad","date":"2026-11-23 10:00",)"
            R"("when":"Monday 23 November at 10 AM","has_time":true})"},
        {R"({"id":"daily","repeat":"weekly:3"})", // Moves on to the first Tuesday.
            R"({"status":"set","id":"daily","task":"Take the pills","date":"2026-11-24 09:00",)"
            R"("when":"Tuesday 24 November at 9 AM","has_time":true,"repeat":"weekly:3","repeat_words":"Every Tuesday"})"},
        {R"({"id":"daily","repeat":"none"})",
            R"({"status":"set","id":"daily","task":"Take the pills","date":"2026-11-22 09:00",)"
            R"("when":"Sunday 22 November at 9 AM","has_time":true})"},
        {R"({"id":"soon","when_back":true})",
            R"({"status":"set","id":"soon","task":"Call mum","when":"when you are back at the computer",)"
            R"("when_back":true})"},
        {R"({"text":"remind me to stretch","when_back":true})",
            R"({"status":"set","id":"0123456789ab","task":"Stretch","when":"when you are back at the computer",)"
            R"("when_back":true})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        ReminderBench bench;
        fill(bench);
        EXPECT_EQ(bench.answer(row.arguments), row.result);
        const std::string result = row.result;
        if (result.find(R"("status":"done")") != std::string::npos && result.find("next") == std::string::npos) {
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
    struct Row {
        std::string arguments;
        const char* says;
    };
    const Row rows[] = {
        {"{}", "text is missing"},
        {R"({"text":7})", "text is missing"},
        {R"({"task":"x","date":"2026-02-29"})", "a day that exists"},
        {R"({"task":"x","date":"tomorrow"})", "a day that exists"},
        {R"({"text":"tomorrow x","repeat":"hourly"})", "repeat must be"},
        {R"({"id":"soon","task":"x","repeat":"hourly"})", "repeat must be"},
        {R"({"done":true,"id":"done"})", "no pending reminder has that id"},
        {R"({"done":true,"id":"away"})", "no pending reminder has that id"},
        {R"({"done":true,"text":"never kept"})", "no pending reminder has these words"},
        {R"({"later":"in an hour","task":"never kept"})", "no pending reminder has these words"},
        {R"({"when_back":true})", "task is missing"},
        {R"({"id":"soon"})", "say what is to change"},
        {R"({"id":"back","repeat":"daily"})", "cannot repeat"},
        {R"({"done":true,"later":"in an hour"})", "only one of list, done and later"},
        {R"({"done":true,"id":"soon","date":"2026-11-23"})", "done and later go with id or task alone"},
        {R"({"later":"in an hour","id":"soon","when_back":true})", "done and later go with id or task alone"},
        {R"({"task":"x","when_back":true,"date":"2026-11-23"})", "when_back means no time"},
        {R"({"text":")" + std::string(3000, 'a') + "\"}", "text is too long"},
        {R"({"text":"tomorrow )" + std::string(600, 'a') + "\"}", "the task is too long"},
    };
    for (const Row& row : rows) {
        ReminderBench bench;
        fill(bench);
        const auto before = bench.notebook.list;
        const std::string answer = bench.answer(row.arguments);
        EXPECT_TRUE(answer.starts_with(R"({"error":"Nothing was )") && answer.find(row.says) != answer.npos)
            << row.arguments << answer;
        EXPECT_EQ(bench.notebook.list, before);
    }
}

/// Whatever is put together, there is one answer; and what is refused or asked about has changed nothing.
TEST(ReminderTools, answerEveryCombination)
{
    const std::string members[] = {R"("text":"tomorrow at noon eat")", R"("task":"pills")",
        R"("date":"2026-11-23 10:00")", R"("repeat":"weekly:2")", R"("when_back":true)", R"("list":true)",
        R"("id":"daily")", R"("done":true)", R"("later":"in an hour")"};
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
