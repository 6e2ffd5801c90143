// SPDX-License-Identifier: MIT
// Catches conversations in writing that skip a line, hang, or end with the wrong exit code.
#include "Quorvell/app/chat/ChatConversation.h"

#include "SessionBench.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

/// Lines that are there as soon as they are asked for, and then the end, unless the writer is slow.
class ReadyLines : public LineSource {
public:
    explicit ReadyLines(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }
    void readNext(Report report) override
    {
        ++asked;
        m_report = std::move(report);
        if (lines.empty() && isSlow)
            return;
        m_scheduler.post([this] { give(lines.empty() ? std::nullopt : std::optional(typed(lines.front()))); });
    }
    bool dropTyped() override { return std::exchange(isHalfTyped, false); }
    void type(const std::string& line) { give(typed(line)); }

    std::deque<std::string> lines;
    bool isSlow = false;
    bool isHalfTyped = false;
    int asked = 0;

private:
    static TypedMessage typed(const std::string& line) { return {{{line}}, false}; }
    void give(const std::optional<TypedMessage>& message)
    {
        if (!lines.empty())
            lines.pop_front();
        std::exchange(m_report, nullptr)(message);
    }

    Scheduler& m_scheduler;
    Report m_report;
};

class ChatConversationTest : public SessionBench {
protected:
    void begin(ChatConversation::Partner partner)
    {
        chat.emplace(
            ChatConversation::Ports{scheduler, lines, [this](int code) { exitCode = code; },
                [this](const std::string& sentence) { notes.push_back(sentence); }, [] { return std::string("used"); }},
            partner);
        audience = &*chat;
        SessionSettings settings;
        settings.replies = SessionSettings::Replies::shown;
        settings.greeting = partner == ChatConversation::Partner::person ? SessionSettings::Greeting::spoken
                                                                         : SessionSettings::Greeting::none;
        chat->begin(make(settings));
        scheduler.settle();
    }
    /// A person's conversation, greeted, in which the test types.
    void beginGreeted()
    {
        lines.isSlow = true;
        begin(ChatConversation::Partner::person);
        becomeReady();
        answer("Hi!");
    }
    /// A script's conversation.
    void beginWith(std::deque<std::string> typed)
    {
        lines.lines = std::move(typed);
        begin(ChatConversation::Partner::script);
    }
    void answer(const std::string& text)
    {
        wire->reportText(text);
        wire->report(live_event::BackendIdle{});
        scheduler.advance(1s);
    }
    void close(const LiveClosure& closure)
    {
        wire->closeWith(closure);
        scheduler.settle();
    }
    bool wasSentLast(const std::string& text) const { return lastSent().ends_with(text); }

    ReadyLines lines{scheduler};
    std::optional<int> exitCode;
    std::vector<std::string> notes; ///< From the program itself.
    std::optional<ChatConversation> chat;
};

const LiveClosure lost{.code = 1006, .reason = "gone", .sentence = "Lost."};
const LiveClosure refused{.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."};

TEST_F(ChatConversationTest, aScriptsLinesGoOneTurnAtATime)
{
    beginWith({"", "one", "  ", "two"});
    becomeReady();
    EXPECT_TRUE(wasSentLast(" one"));
    callTool("call_1", "nothing");
    wire->reportText("First, ");
    scheduler.advance(30s); // The backend still works, so the second line waits.
    EXPECT_EQ(lines.asked, 2);
    answer("done.");
    EXPECT_TRUE(wasSentLast(" two"));
    answer("Done too.");
    EXPECT_EQ(lastSent(), "close");
    EXPECT_EQ(exitCode, std::nullopt);
    close({});
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(connectionsMade, 1);
}

TEST_F(ChatConversationTest, withoutAWordNothingConnects)
{
    beginWith({});
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(connectionsMade, 0);
}

TEST_F(ChatConversationTest, aScriptEndsWithTheFirstFailure)
{
    beginWith({"one", "two"});
    becomeReady();
    close(refused);
    EXPECT_EQ(exitCode, 1);
    EXPECT_EQ(lines.lines.size(), 1U);
}

TEST_F(ChatConversationTest, aConnectionLostBetweenTurnsIsMadeAnew)
{
    lines.isSlow = true;
    beginWith({"one"});
    becomeReady();
    answer("Done.");
    close(lost);
    EXPECT_EQ(exitCode, std::nullopt);
    scheduler.advance(9s);
    EXPECT_EQ(connectionsMade, 2);
    becomeReady();
    lines.type("two");
    scheduler.settle();
    EXPECT_TRUE(wasSentLast(" two"));
}

TEST_F(ChatConversationTest, anUnansweredLineIsNotedInTheExitCode)
{
    for (const bool isProblemTold : {false, true}) {
        beginWith({"one"});
        becomeReady();
        if (isProblemTold) {
            wire->report(live_event::ServerError{{}, "Too many requests."});
            wire->report(live_event::BackendIdle{});
        }
        scheduler.advance(2min);
        close({});
        EXPECT_EQ(exitCode, 1);
    }
}

TEST_F(ChatConversationTest, aPersonIsGreetedAndMayTryAgain)
{
    begin(ChatConversation::Partner::person);
    lines.lines = {"hello"};
    becomeReady();
    EXPECT_EQ(lines.asked, 0);
    answer("Hi!");
    EXPECT_TRUE(wasSentLast(" hello"));
    lines.lines = {"again"};
    close(lost);
    EXPECT_EQ(exitCode, std::nullopt);
    scheduler.advance(9s);
    EXPECT_EQ(connectionsMade, 2);
    close(refused);
    EXPECT_EQ(exitCode, 1);
}

TEST_F(ChatConversationTest, anInterruptOfAScriptEndsItCleanly)
{
    beginWith({"one"});
    chat->interrupt(); // While connecting.
    EXPECT_EQ(lastSent(), "close");
    close({});
    EXPECT_EQ(exitCode, 0);
}

TEST_F(ChatConversationTest, aPersonsFirstInterruptStopsTheAnswerOrDropsTheLineAndTheSecondLeaves)
{
    beginGreeted();
    lines.type("tell me a long story");
    scheduler.settle();
    EXPECT_TRUE(controller->isTurnOpen());
    chat->interrupt();
    scheduler.advance(1s);
    EXPECT_FALSE(controller->isTurnOpen());
    EXPECT_EQ(exitCode, std::nullopt);
    EXPECT_EQ(lines.asked, 2) << "the next message is waited for";
    lines.type("and now");
    answer("Fine.");
    lines.isHalfTyped = true;
    chat->interrupt();
    EXPECT_FALSE(lines.isHalfTyped);
    EXPECT_TRUE(notes.empty());
    chat->interrupt();
    EXPECT_EQ(lastSent(), "close");
    close({});
    EXPECT_EQ(exitCode, 0);
}

TEST_F(ChatConversationTest, aPersonsConversationEndsWithinAnAnswerWhenTheSystemWantsIt)
{
    beginGreeted();
    lines.type("tell me a long story");
    scheduler.settle();
    chat->leave();
    EXPECT_EQ(lastSent(), "close");
    close({});
    EXPECT_EQ(exitCode, 0);
}

TEST_F(ChatConversationTest, wordsForTheProgramNeverReachTheModel)
{
    beginGreeted();
    struct Row {
        const char* typed;
        const char* told;
    };
    const Row rows[] = {{"/help", "/mode"}, {"/mode", "Mode: guide"}, {"/mode loud", "three modes"}, {"/usage", "used"},
        {"/mute", "--aloud"}, {"/sing", "no /sing"}, {"/hepl", "mean /help?"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        notes.clear();
        lines.type(row.typed);
        ASSERT_EQ(notes.size(), 1U);
        EXPECT_NE(notes[0].find(row.told), std::string::npos) << notes[0];
        EXPECT_FALSE(wasSentLast(row.typed));
    }
    lines.type("/mode do");
    EXPECT_EQ(controller->helpMode(), HelpMode::do_);
    lines.type("/etc/hosts is what?");
    EXPECT_TRUE(controller->isTurnOpen());
    answer("A file.");
    lines.type("/quit");
    close({});
    EXPECT_EQ(exitCode, 0);
}

} // namespace
} // namespace quorvell
