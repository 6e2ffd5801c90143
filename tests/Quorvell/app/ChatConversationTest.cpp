#include "Quorvell/app/ChatConversation.h"

#include "FakeLiveConnection.h"
#include "Quorvell/app/ObserverGroup.h"
#include "Quorvell/app/SilentPlayer.h"
#include "RecordingObserver.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

#include <deque>
#include <optional>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

class NoLog : public EventLog {
public:
    void record(std::string_view, const Json&) override { }
};

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

class ChatConversationTest : public testing::Test {
protected:
    void begin(ChatConversation::Partner partner)
    {
        chat.emplace(
            ChatConversation::Ports{scheduler, lines, [this](int code) { exitCode = code; },
                [this](const std::string& sentence) { told.push_back(sentence); }, [] { return std::string("used"); }},
            partner);
        observers.emplace(std::vector<SessionAudience*>{&recording, &*chat});
        const auto connections = [this](LiveConnectionObserver& session, LiveMedium) {
            auto made = std::make_unique<FakeLiveConnection>(session);
            wire = made.get();
            ++connectionsMade;
            return made;
        };
        SessionSettings settings;
        settings.replies = SessionSettings::Replies::shown;
        settings.greeting = partner == ChatConversation::Partner::person ? SessionSettings::Greeting::spoken
                                                                         : SessionSettings::Greeting::none;
        controller.emplace(
            SessionController::Ports{scheduler, connections, player, log, *observers, tools, nullptr}, settings);
        chat->begin(*controller);
        scheduler.settle();
    }
    void becomeActive() { wire->report(live_event::SetupComplete{"sess_1"}); }
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

    VirtualScheduler scheduler;
    ReadyLines lines{scheduler};
    RecordingObserver recording;
    SilentPlayer player;
    NoLog log;
    ToolRegistry registry;
    ToolDispatcher tools{registry};
    FakeLiveConnection* wire = nullptr;
    int connectionsMade = 0;
    std::optional<int> exitCode;
    std::vector<std::string> told;
    std::optional<ChatConversation> chat;
    std::optional<ObserverGroup> observers;
    std::optional<SessionController> controller;
};

using Partner = ChatConversation::Partner;

TEST_F(ChatConversationTest, aScriptsLinesGoOneTurnAtATime)
{
    lines.lines = {"", "one", "  ", "two"};
    begin(Partner::script);
    becomeActive();
    EXPECT_TRUE(wire->sent.back().ends_with(" one"));
    wire->report(live_event::ToolCall{{{"call_1", "nothing", {}}}});
    wire->reportText("First, ");
    scheduler.advance(30s); // The backend still works, so the second line waits.
    EXPECT_EQ(lines.asked, 2);
    answer("done.");
    EXPECT_TRUE(wire->sent.back().ends_with(" two"));
    answer("Done too.");
    EXPECT_EQ(wire->sent.back(), "close");
    EXPECT_EQ(exitCode, std::nullopt);
    close({});
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(connectionsMade, 1);
}

TEST_F(ChatConversationTest, withoutAWordNothingConnects)
{
    begin(Partner::script);
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(connectionsMade, 0);
}

TEST_F(ChatConversationTest, aScriptEndsWithTheFirstFailure)
{
    lines.lines = {"one", "two"};
    begin(Partner::script);
    becomeActive();
    close({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
    EXPECT_EQ(exitCode, 1);
    EXPECT_EQ(lines.lines.size(), 1U);
}

TEST_F(ChatConversationTest, aConnectionLostBetweenTurnsIsMadeAnew)
{
    lines.lines = {"one"};
    lines.isSlow = true;
    begin(Partner::script);
    becomeActive();
    answer("Done.");
    close({.code = 1006, .reason = "gone", .sentence = "Lost."});
    EXPECT_EQ(exitCode, std::nullopt);
    scheduler.advance(9s);
    EXPECT_EQ(connectionsMade, 2);
    becomeActive();
    lines.type("two");
    scheduler.settle();
    EXPECT_TRUE(wire->sent.back().ends_with(" two"));
}

TEST_F(ChatConversationTest, anUnansweredLineIsNotedInTheExitCode)
{
    lines.lines = {"one"};
    begin(Partner::script);
    becomeActive();
    scheduler.advance(2min);
    close({});
    EXPECT_EQ(exitCode, 1);
}

TEST_F(ChatConversationTest, aPersonIsGreetedAndMayTryAgain)
{
    begin(Partner::person);
    lines.lines = {"hello"};
    becomeActive();
    EXPECT_EQ(lines.asked, 0);
    answer("Hi!");
    EXPECT_TRUE(wire->sent.back().ends_with(" hello"));
    lines.lines = {"again"};
    close({.code = 1006, .reason = "gone", .sentence = "Lost."});
    EXPECT_EQ(exitCode, std::nullopt);
    scheduler.advance(9s);
    EXPECT_EQ(connectionsMade, 2);
    close({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
    EXPECT_EQ(exitCode, 1);
}

TEST_F(ChatConversationTest, anInterruptOfAScriptEndsItCleanly)
{
    lines.lines = {"one"};
    begin(Partner::script);
    chat->interrupt(); // While connecting.
    EXPECT_EQ(wire->sent.back(), "close");
    close({});
    EXPECT_EQ(exitCode, 0);
}

TEST_F(ChatConversationTest, aPersonsFirstInterruptStopsTheAnswerOrDropsTheLineAndTheSecondLeaves)
{
    begin(Partner::person);
    lines.isSlow = true;
    becomeActive();
    answer("Hi!");
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
    EXPECT_TRUE(told.empty());
    chat->interrupt();
    EXPECT_EQ(wire->sent.back(), "close");
    close({});
    EXPECT_EQ(exitCode, 0);
}

TEST_F(ChatConversationTest, wordsForTheProgramNeverReachTheModel)
{
    begin(Partner::person);
    lines.isSlow = true;
    becomeActive();
    answer("Hi!");
    struct Row {
        const char* typed;
        const char* told;
    };
    const Row rows[] = {{"/help", "/mode"}, {"/mode", "Mode: guide"}, {"/mode loud", "three modes"}, {"/usage", "used"},
        {"/mute", "--aloud"}, {"/sing", "no /sing"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        told.clear();
        lines.type(row.typed);
        ASSERT_EQ(told.size(), 1U);
        EXPECT_NE(told[0].find(row.told), std::string::npos) << told[0];
        EXPECT_FALSE(wire->sent.back().ends_with(row.typed));
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
