// SPDX-License-Identifier: MIT
// Catches a model that is waited for too long, called too often, or believed.
#include "LocalModel/ModelRun.h"

#include "QuorvellCore/live/tools/ToolCatalogue.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using Time = ModelRun::Time;

std::string wordsOf(const std::string& text)
{
    return dumpJson(Json{{"choices", Json::array({{{"message", {{"content", text}}}}})}});
}

std::string callOf(const std::string& name, const std::string& arguments)
{
    const Json call{{"function", {{"name", name}, {"arguments", arguments}}}};
    return dumpJson(Json{{"choices", Json::array({{{"message", {{"tool_calls", Json::array({call})}}}}})}});
}

/// A model whose answers the test plays. Everything that comes of them, as a text.
class Played {
public:
    Played()
        : m_run({*ModelAccess::addressOf("127.0.0.1:8080"), "small"},
            std::make_shared<ModelTools>(ToolCatalogue::notebookTools()),
            ModelRequest("small", "Saturday", {{"user", "hello"}, {"assistant", "Hello."}}, "tidy up my day"), "Sorry.")
    {
        show(m_run.begin(now));
    }
    std::string answer(const std::string& body)
    {
        std::string all = show(m_run.received(body, now));
        return all + show(m_run.ended(ModelEnd::whole, now));
    }
    std::string send(const std::string& bytes) { return show(m_run.received(bytes, now)); }
    std::string end(ModelEnd end) { return show(m_run.ended(end, now)); }
    std::string took(const std::string& result, const std::string& told) { return show(m_run.took(result, told, now)); }
    std::string wait()
    {
        const Time deadline = m_run.deadline().value_or(now);
        const std::string waited = std::to_string((deadline - now).count()) + " ms ";
        now = deadline;
        return waited + show(m_run.tick(now));
    }
    const std::string& lastBody() const { return m_body; }

    Time now{};

private:
    std::string show(const ModelRun::Next& next)
    {
        std::string all;
        for (const std::string& sentence : next.sentences)
            all += "<" + sentence + ">";
        m_body = next.ask.value_or(m_body);
        return all + (next.ask ? "ask" : "") + (next.call ? "call " + next.call->name : "") + (next.isOver ? "." : "");
    }

    ModelRun m_run;
    std::string m_body;
};

const std::string reminder = callOf("set_reminder", R"({"text":"at 5 pm to eat"})");
const std::string set = R"({"status":"set"})";
constexpr const char* told = "I'll remind you at 5 PM.";

} // namespace

TEST(ModelRun, saysWhatIsTrue)
{
    Played talk;
    EXPECT_EQ(talk.answer(reminder), "call set_reminder");
    EXPECT_EQ(talk.took(set, told), "<I'll remind you at 5 PM.>ask");
    EXPECT_NE(talk.lastBody().find(R"("role":"tool","tool_call_id":"call_1_0","content":"{\"status\":\"set\"}")"),
        std::string::npos);
    EXPECT_EQ(talk.answer(wordsOf("I have set it. Enjoy!")), "<Enjoy!>.");

    struct Row {
        const char* name;
        std::string body;
        const char* said;
    };
    const Row rows[] = {
        {"an answer", wordsOf("Bees do."), "<Bees do.>."},
        {"a claim", wordsOf("I have deleted your notes."),
            "<The model on this computer wrote that it did something, but nothing was changed.>."},
        {"nothing", wordsOf(""), "<The model on this computer had no answer, so nothing was done.>."},
        {"nonsense", "<html>",
            "<The model on this computer gave an answer that cannot be used, so nothing was done.>."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(Played().answer(row.body), row.said);
    }
    // What failed was not done, whatever the model makes of it.
    Played failing;
    failing.answer(reminder);
    EXPECT_EQ(failing.took(R"({"error":"The disk is full."})", "That did not work."), "<That did not work.>ask");
    EXPECT_EQ(failing.answer(wordsOf("I set it.")),
        "<The model on this computer wrote that it did something, but nothing was changed.>.");
}

TEST(ModelRun, mendsOneCallAndThenNoMore)
{
    Played talk;
    EXPECT_EQ(talk.answer(callOf("format_disk", "{}")), "ask");
    EXPECT_NE(talk.lastBody().find("There is no tool of that name."), std::string::npos);
    EXPECT_EQ(talk.answer(reminder), "call set_reminder");
    EXPECT_EQ(talk.took(set, told), "<I'll remind you at 5 PM.>ask");
    EXPECT_EQ(talk.answer(callOf("read_note", "{}")),
        "<The model on this computer asked for something that cannot be done, so nothing more was done.>.");
    EXPECT_EQ(talk.answer(reminder), "") << "it is over";
}

TEST(ModelRun, waitsSoLongAndNoLonger)
{
    Played silent;
    EXPECT_EQ(silent.wait(), "8000 ms <The model on this computer did not answer in time, so nothing was done.>.");
    Played busy;
    busy.now = Time(5000);
    EXPECT_EQ(busy.send(": busy\n\n"), "");
    EXPECT_EQ(busy.wait(), "3000 ms <The model on this computer did not answer in time, so nothing was done.>.");
    Played slow;
    slow.now = Time(5000);
    EXPECT_EQ(slow.send("data: {\"choices\":[{\"delta\":{\"content\":\"Well. I \"}}]}\n\n"), "<Well.>");
    EXPECT_EQ(slow.wait(), "55000 ms <The model on this computer did not answer in time, so nothing was done.>.");
    Played gone;
    EXPECT_EQ(gone.end(ModelEnd::unreachable), "<The model on this computer cannot be reached.><Sorry.>.");

    Played endless;
    std::string last;
    int calls = 0;
    for (; calls < 100 && (last = endless.answer(reminder)) == "call set_reminder"; ++calls)
        endless.took(set, told);
    EXPECT_EQ(calls, ModelRun::mostRounds);
    EXPECT_EQ(last, "<The model on this computer did not come to an end, so nothing more was done.>.");
}

TEST(ModelAccess, staysOnThisComputerUnlessItIsEncrypted)
{
    const std::pair<const char*, const char*> rows[] = {{"127.0.0.1:8080", "http://127.0.0.1:8080"},
        {"localhost:1", "http://localhost:1"}, {"https://localhost:1", "https://localhost:1"},
        {"box.example", "https://box.example"}, {"https://box.example:8", "https://box.example:8"},
        {"http://box.example", ""}, {"http://127.0.0.1.evil.example", ""}, {"ftp://localhost", ""}, {"", ""}};
    for (const auto& [host, url] : rows) {
        const auto address = ModelAccess::addressOf(host);
        EXPECT_EQ(address ? address->webUrl("") : "", url) << host;
    }
}

} // namespace quorvell
