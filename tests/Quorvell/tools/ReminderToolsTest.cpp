#include "Quorvell/tools/ReminderTools.h"

#include "QuorvellCore/reminders/ReminderState.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {
namespace {

/// Keeps what it is given and answers when the test says so.
class WaitingNotebook final : public Notebook {
public:
    const std::vector<Note>& notes() const override { return list; }
    std::optional<Note> note(const std::string&) const override { return std::nullopt; }
    void add(Note note, NotebookCallback done) override
    {
        list.push_back(std::move(note));
        waiting.push_back(std::move(done));
    }
    void update(const std::string&, std::function<void(Note&)>, NotebookCallback) override { }

    std::vector<Note> list;
    std::vector<NotebookCallback> waiting;
};

struct Bench {
    WaitingNotebook notebook;
    ToolRegistry registry;
    std::vector<std::string> answers;

    Bench()
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
        for (const NotebookCallback& done : std::exchange(notebook.waiting, {}))
            done({.isStored = true, .problem = ""});
        EXPECT_EQ(answers.size(), 1U);
        auto result = answers.empty() ? std::nullopt : parseJson(answers.front());
        if (!result)
            return "no answer";
        const bool needsAdvice = readString(*result, "status") != "set" && !result->contains("error");
        EXPECT_NE(readString(*result, "message").has_value(), !needsAdvice);
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
        {R"({"text":"today at 5 call mum"})", // Five in the morning is over.
            R"({"status":"set","id":"0123456789ab","task":"Call mum","date":"2026-11-21 17:00",)"
            R"("when":"Saturday 21 November at 5 PM","has_time":true})",
            "2026-11-21T16:00:00.000Z", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        Bench bench;
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
        {R"({"task":"pay rent","date":"2026-11-21 09:00"})", R"({"status":"needs_time","task":"Pay rent"})"},
        {R"({"text":"tomorrow at noon"})",
            R"({"status":"needs_task","date":"2026-11-22 12:00","when":"Sunday 22 November at 12 PM"})"},
        {R"({"task":"","date":"2026-11-22","repeat":"daily"})",
            R"({"status":"needs_task","date":"2026-11-22","when":"Sunday 22 November at 9 AM","repeat":"daily"})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        Bench bench;
        EXPECT_EQ(bench.answer(row.arguments), row.result);
        EXPECT_TRUE(bench.notebook.list.empty());
    }
}

TEST(ReminderTools, refuses)
{
    Bench bench;
    for (const std::string& arguments :
        {std::string("{}"), std::string(R"({"text":7})"), std::string(R"({"task":"x","date":"2026-02-29"})"),
            std::string(R"({"task":"x","date":"tomorrow"})"), std::string(R"({"text":"tomorrow x","repeat":"hourly"})"),
            std::string(R"({"id":"a","done":true})"), std::string(R"({"text":"call mum","when_back":true})"),
            R"({"text":")" + std::string(3000, 'a') + "\"}", R"({"text":"tomorrow )" + std::string(600, 'a') + "\"}"}) {
        EXPECT_TRUE(bench.answer(arguments).starts_with(R"({"error":)")) << arguments;
        EXPECT_TRUE(bench.notebook.list.empty()) << arguments;
    }
}

TEST(ReminderTools, answersOnceTheNoteIsStored)
{
    Bench bench;
    bench.call(R"({"text":"tomorrow at noon eat"})");
    EXPECT_TRUE(bench.answers.empty());
    ASSERT_EQ(bench.notebook.waiting.size(), 1U);
    bench.notebook.waiting.front()({.isStored = false, .problem = "The disk is full. Free some space."});
    EXPECT_EQ(bench.answers, (std::vector<std::string>{R"({"error":"The disk is full. Free some space."})"}));
}

} // namespace
} // namespace quorvell
