#include "Quorvell/app/ConversationEvents.h"
#include "Quorvell/app/ConversationText.h"
#include "Quorvell/app/WorkStatus.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Words = SessionObserver::Words;
using Outcome = SessionObserver::TurnOutcome;

/// One conversation with everything in it.
void hold(SessionObserver& view, VirtualScheduler& clock)
{
    view.phaseChanged(SessionPhase::connecting);
    clock.advance(40ms);
    view.phaseChanged(SessionPhase::active);
    view.userSaid("keep milk", Words::typed);
    view.toolCalled({"call_1", "keep_note", {{"title", "milk"}}});
    view.toolAnswered({"call_1", "keep_note", {{"status", "kept"}, {"count", 2}}});
    view.assistantSaid("Noted.");
    view.assistantSaid("Anything else?");
    view.turnCompleted(Outcome::answered);
    view.userSaid("hello?", Words::spoken);
    view.turnCompleted(Outcome::unanswered);
    view.problemArose("Trouble.");
    SessionEnd end;
    end.reason = "gone";
    end.isFailure = true;
    end.sentence = "Lost.";
    end.unsent = {"one more"};
    view.conversationEnded(end);
}

TEST(ConversationEvents, isOneObjectALineWithTimes)
{
    std::ostringstream out;
    VirtualScheduler clock;
    ConversationEvents view(out, clock);
    hold(view, clock);
    const std::string at0 = R"("at":"2026-11-21T10:00:00.000Z","ms":0)";
    const std::string at40 = R"("at":"2026-11-21T10:00:00.040Z","ms":40)";
    EXPECT_EQ(out.str(),
        R"({"event":"phase",)" + at0
            + R"(,"phase":"connecting"})"
              "\n"
              R"({"event":"phase",)"
            + at40
            + R"(,"phase":"active"})"
              "\n"
              R"({"event":"words",)"
            + at40
            + R"(,"speaker":"user","source":"typed","text":"keep milk"})"
              "\n"
              R"({"event":"tool_call",)"
            + at40
            + R"(,"id":"call_1","name":"keep_note","args":{"title":"milk"}})"
              "\n"
              R"({"event":"tool_result",)"
            + at40
            + R"(,"id":"call_1","name":"keep_note","result":{"status":"kept","count":2}})"
              "\n"
              R"({"event":"words",)"
            + at40
            + R"(,"speaker":"assistant","text":"Noted."})"
              "\n"
              R"({"event":"words",)"
            + at40
            + R"(,"speaker":"assistant","text":"Anything else?"})"
              "\n"
              R"({"event":"reply",)"
            + at40
            + R"(,"answered":true,"text":"Noted. Anything else?"})"
              "\n"
              R"({"event":"words",)"
            + at40
            + R"(,"speaker":"user","source":"spoken","text":"hello?"})"
              "\n"
              R"({"event":"reply",)"
            + at40
            + R"(,"answered":false,"text":""})"
              "\n"
              R"({"event":"problem",)"
            + at40
            + R"(,"text":"Trouble."})"
              "\n"
              R"({"event":"closed",)"
            + at40
            + R"(,"reason":"gone","failed":true,"text":"Lost.","unsent":["one more"]})"
              "\n");
}

TEST(ConversationText, showsRepliesAndKeepsProblemsApart)
{
    std::ostringstream out;
    std::ostringstream errors;
    VirtualScheduler clock;
    ConversationText plain(out, errors, {});
    hold(plain, clock);
    EXPECT_EQ(out.str(), "  · keep_note  title: milk\n  · keep_note  status: kept, count: 2\nNoted.\nAnything else?\n");
    EXPECT_EQ(errors.str(), "No answer came. Ask again.\nTrouble.\nLost.\nNot sent: one more\n");

    out.str("");
    ConversationText coloured(out, errors, {ConversationText::Colour::ansi, ConversationText::Speakers::named, {}});
    hold(coloured, clock);
    EXPECT_EQ(out.str(),
        "You: keep milk\n\x1b[2m  · keep_note  title: milk\x1b[0m\n"
        "\x1b[2m  · keep_note  status: kept, count: 2\x1b[0m\nQuorvell: Noted.\nQuorvell: Anything else?\n"
        "You: hello?\n");
}

TEST(WorkStatus, tellsOnlyOfLongWaitsAndMakesRoomForWords)
{
    std::ostringstream out;
    VirtualScheduler clock;
    StatusLine line(out);
    WorkStatus status(clock, line);
    const auto written = [&] { return std::exchange(out, std::ostringstream()).str(); };
    status.phaseChanged(SessionPhase::connecting);
    EXPECT_EQ(written(), "\x1b[2mCalling the assistant …\x1b[0m");
    status.phaseChanged(SessionPhase::active);
    EXPECT_EQ(written(), "\r\x1b[K");
    status.userSaid("find it", Words::typed);
    clock.advance(1s);
    EXPECT_EQ(written(), "");
    status.toolCalled({"call_1", "look_up", {}});
    clock.advance(1s);
    EXPECT_EQ(written(), "\x1b[2mWorking: look up … 2 s (Ctrl+C stops)\x1b[0m");
    line.aside([&] { out << "said\n"; });
    EXPECT_EQ(written(), "\r\x1b[Ksaid\n\x1b[2mWorking: look up … 2 s (Ctrl+C stops)\x1b[0m");
    status.turnCompleted(Outcome::answered);
    EXPECT_EQ(written(), "\r\x1b[K");
    clock.advance(1min);
    EXPECT_EQ(written(), "");
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST(ConversationText, neverLetsForeignTextMoveTheCursor)
{
    EXPECT_EQ(ConversationText::printable("a\x1b[2Jb\a\x7f\r\xC2\x9B"
                                          "31mc\n\td é"),
        "a[2Jb31mc\n\td é");
    EXPECT_EQ(ConversationText::printable("\xC2"), "\xEF\xBF\xBD");
    const std::string summary =
        ConversationText::summary({{"text", "a\nb"}, {"list", {1, 2}}, {"long", std::string(300, 'x')}});
    EXPECT_EQ(summary.substr(0, 27), "text: a b, list: [1,2], lon");
    EXPECT_TRUE(summary.ends_with("x…"));
}

} // namespace
} // namespace quorvell
