// SPDX-License-Identifier: MIT
// Catches conversations shown wrongly, to people and to scripts, and outside text that moves the cursor.
#include "FixtureTable.h"
#include "Quorvell/app/conversation/ConversationEvents.h"
#include "Quorvell/app/conversation/ConversationText.h"
#include "Quorvell/app/conversation/ToolText.h"
#include "Quorvell/app/conversation/WorkNote.h"
#include "Quorvell/app/conversation/WorkStatus.h"
#include "Quorvell/app/talk/TalkStatus.h"
#include "QuorvellCore/text/PrintableText.h"
#include "TemporaryFolder.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sstream>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Words = SessionObserver::Words;
using Outcome = SessionObserver::TurnOutcome;

const TaskPlan moving{"Move", {{"Pack", true}}, {}, {}};

/// One conversation with everything in it.
void hold(SessionObserver& view, VirtualScheduler& clock)
{
    view.phaseChanged(SessionPhase::connecting);
    clock.advance(40ms);
    view.phaseChanged(SessionPhase::active);
    view.userSaid("keep milk", Words::typed);
    view.toolCalled({"call_1", "keep_note", {{"title", "milk"}}});
    view.toolAnswered({"call_1", "keep_note", {{"status", "kept"}, {"title", "Milk"}}});
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
    ThoughtSummary thought;
    for (const char* piece : {"**Look", "ing**\n", "Found."}) {
        thought.add(piece);
        view.thoughtChanged(thought);
    }
    view.planChanged(moving);
    view.assistantSaid("Here.");
    EXPECT_EQ(out.str(), test::readText(QUORVELL_FIXTURES "/app/conversation.jsonl"));
}

TEST(ConversationText, showsRepliesAndKeepsProblemsApart)
{
    std::ostringstream out;
    std::ostringstream errors;
    VirtualScheduler clock;
    ConversationText plain(out, errors, {});
    hold(plain, clock);
    plain.planChanged(moving);
    EXPECT_EQ(out.str(), "  · Note kept: Milk\nNoted.\nAnything else?\n  · [x] 1. Pack\n");
    EXPECT_EQ(errors.str(), "No answer came. Ask again.\nTrouble.\nLost.\nNot sent: one more\n");

    out.str("");
    ConversationText::Style style{TerminalColour::ansi, ConversationText::Speakers::named};
    style.tools = ConversationText::Tools::whole;
    style.columns = [] { return std::size_t(20); };
    ConversationText coloured(out, errors, style);
    hold(coloured, clock);
    EXPECT_EQ(out.str(),
        "You: keep milk\n\x1b[2m  · keep_note\n    {\"title\":\"milk\"}\x1b[0m\n"
        "\x1b[2m  · keep_note\n    {\"status\":\"kept\",\"title\":\"Milk\"}\x1b[0m\n"
        "Quorvell: Noted.\nQuorvell: Anything\nelse?\nYou: hello?\n");
}

TEST(ToolText, tellsWhatWasDoneInAFewWords)
{
    for (const auto& [name, lines] : test::fixtureRows("app/toolTexts.txt", 3)) // Tool, answer, what is told.
        EXPECT_EQ(ToolText::of({"call_1", lines[0], parseJson(lines[1]).value_or(Json())})
                      .value_or("(the assistant's words tell it)"),
            lines[2]);
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
    EXPECT_EQ(written(), "\x1b[2mWorking: looking it up on the web … 2 s (Ctrl+C stops)\x1b[0m");
    line.aside([&] { out << "said\n"; });
    EXPECT_EQ(written(), "\r\x1b[Ksaid\n\x1b[2mWorking: looking it up on the web … 2 s (Ctrl+C stops)\x1b[0m");
    ThoughtSummary thought;
    thought.add("**Comparing both**\n");
    status.thoughtChanged(thought);
    clock.advance(1s);
    EXPECT_EQ(written(), "\r\x1b[K\x1b[2mWorking: Comparing both … 3 s (Ctrl+C stops)\x1b[0m");
    status.assistantReplyGrew("It is\nhere, 日本");
    EXPECT_EQ(written(), "\r\x1b[K\x1b[2mIt is here, 日本 …\x1b[0m");
    status.turnCompleted(Outcome::answered);
    EXPECT_EQ(written(), "\r\x1b[K");
    clock.advance(1min);
    EXPECT_EQ(written(), "");
    EXPECT_EQ(clock.pendingTimers(), 0U);
}

TEST(TalkStatus, tellsWhoseTurnItIs)
{
    std::ostringstream out;
    VirtualScheduler clock;
    StatusLine line(out, TerminalColour::none);
    TalkStatus status(clock, line, [] { return 65.0; });
    const auto shows = [&](const std::string& text) {
        return std::exchange(out, std::ostringstream()).str().find(text) != std::string::npos;
    };
    status.phaseChanged(SessionPhase::connecting);
    EXPECT_TRUE(shows("calling the assistant"));
    status.phaseChanged(SessionPhase::active);
    status.earChanged(SessionObserver::Ear::open);
    EXPECT_TRUE(shows("listening    ▯▯▯▯▯▯▯▯  · today 1 min 5 s"));
    status.earChanged(SessionObserver::Ear::hearing);
    EXPECT_TRUE(shows("hearing you"));
    status.earChanged(SessionObserver::Ear::open);
    status.userSaid("hello", Words::spoken);
    EXPECT_TRUE(shows("thinking"));
    ThoughtSummary thought;
    thought.add("**Comparing both**\n");
    status.thoughtChanged(thought);
    clock.advance(12s);
    EXPECT_TRUE(shows("thinking 12 s  ▯▯▯▯▯▯▯▯  · Comparing both …  · today"));
    status.toolCalled({"call_1", "whats_on", {}});
    EXPECT_TRUE(shows("· looking at the calendar …"));
    status.assistantWordsHeard("Hi");
    EXPECT_TRUE(shows("speaking"));
    status.turnCompleted(Outcome::answered);
    status.restChanged(Doze::dozing);
    EXPECT_TRUE(shows("resting; talk to wake it"));
    status.earChanged(SessionObserver::Ear::muted);
    EXPECT_TRUE(shows("muted"));
}

TEST(WorkNote, tellsOnceOfALongWait)
{
    struct Row {
        const char* name;
        std::function<void(SessionObserver&)> meanwhile;
        std::vector<std::string> notes;
    };
    ThoughtSummary thought;
    thought.add("**Comparing both**\n");
    const Row rows[] = {
        {"nothing comes", [](SessionObserver&) {}, {"still working on it …"}},
        {"a thought comes", [&](SessionObserver& view) { view.thoughtChanged(thought); },
            {"still working on it: Comparing both …"}},
        {"a tool runs",
            [](SessionObserver& view) {
                view.toolCalled({"call_1", "look_up", {}});
            },
            {"still working on it: looking it up on the web …"}},
        {"an answer is shown", [](SessionObserver& view) { view.assistantSaid("Here."); }, {}},
        {"an answer is spoken", [](SessionObserver& view) { view.assistantWordsHeard("Here"); }, {}},
        {"the turn ends", [](SessionObserver& view) { view.turnCompleted(Outcome::interrupted); }, {}},
        {"all ends", [](SessionObserver& view) { view.conversationEnded({}); }, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> notes;
        VirtualScheduler clock;
        WorkNote work(clock, [&](const std::string& note) { notes.push_back(note); });
        work.userSaid("find it", Words::typed);
        clock.advance(2s);
        row.meanwhile(work);
        clock.advance(1min);
        EXPECT_EQ(notes, row.notes);
    }
}

TEST(ConversationText, neverLetsForeignTextMoveTheCursor)
{
    EXPECT_EQ(printableText("a\x1b[2Jb\a\x7f\r\xC2\x9B"
                            "31mc\n\td é"),
        "a[2Jb31mc\n\td é");
    EXPECT_EQ(printableText("\xC2"), "\xEF\xBF\xBD");
    const std::string evil = "a\x1b[2J\u202Eb";
    std::ostringstream out;
    ConversationText::Style style;
    style.tools = ConversationText::Tools::whole;
    ConversationText text(out, out, style);
    text.toolCalled({"call_1", evil, {}});
    text.toolAnswered({"call_1", evil, {}});
    text.assistantSaid(evil);
    text.problemArose(evil);
    text.note(evil);
    VirtualScheduler clock;
    {
        StatusLine line(out, TerminalColour::none);
        line.show(evil);
        WorkStatus status(clock, line);
        status.userSaid("", Words::typed);
        status.toolCalled({"call_1", evil, {}});
        clock.advance(3s);
        status.assistantReplyGrew(evil);
    }
    std::string shown = out.str();
    for (std::size_t at = shown.find("\r\x1b[K"); at != shown.npos; at = shown.find("\r\x1b[K"))
        shown.erase(at, 4); // The status line's own.
    EXPECT_EQ(shown.find_first_of("\x1b\r"), shown.npos) << shown;
    EXPECT_EQ(shown.find("\u202E"), shown.npos) << shown;
}

TEST(WorkStatus, showsTheEndOfAnAnswerWithoutBlanks)
{
    std::ostringstream out;
    VirtualScheduler clock;
    StatusLine line(out, TerminalColour::none);
    WorkStatus status(clock, line);
    status.userSaid("go", Words::typed);
    for (const std::string& delta : {std::string(15'000'000, 'x'), std::string(5, 'y')})
        status.assistantReplyGrew(delta);
    EXPECT_TRUE(out.str().ends_with("\r\x1b[K" + std::string(65, 'x') + "yyyyy …"));
    EXPECT_LT(out.str().size(), 1000U) << "what is kept is a line";
    out.str("");
    status.assistantReplyGrew(std::string(3000, ' ') + "é");
    EXPECT_TRUE(out.str().ends_with("é …"));
    EXPECT_EQ(printableLine("a\nb" + std::string(300, 'x'), ConversationText::longestNote),
        "a b" + std::string(156, 'x') + "…");
}

} // namespace
} // namespace quorvell
