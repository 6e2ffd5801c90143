// SPDX-License-Identifier: MIT
// Whose words count, when they come late, and what is told without being asked for.
#include "SessionBench.h"

namespace quorvell {
namespace {

class SessionWordsTest : public SessionBench {
protected:
    SessionWordsTest() { own({"keep_note"}); }
};

TEST_F(SessionWordsTest, aTurnThatNeverEndsIsHeldWithinBounds)
{
    const std::string piece = std::string(999, 'x') + "é"; // A bound falls into the middle of a character.
    const std::string delta = piece + piece + piece + piece + piece + piece + piece + piece;
    struct Row {
        const char* name;
        LiveServerEvent event;
        std::size_t most;
    };
    const Row rows[] = {
        {"the voice's words", live_event::OutputTranscript{delta}, ConversationTurn::longestReply},
        {"the user's words", live_event::InputTranscript{delta}, ConversationTurn::longestHeard},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        makeActive();
        for (int count = 0; count < 200; ++count)
            wire->report(row.event);
        wire->report(live_event::Delegated{"deleg_1"}); // Ends what the user says.
        controller->stop("enough");
        std::size_t longest = 0;
        for (const auto& line : saidSince())
            longest = std::max(longest, line.size());
        EXPECT_GT(longest, row.most - 100);
        EXPECT_LT(longest, row.most + 100);
    }
    makeActive();
    for (int minute = 0; minute < 15; ++minute)
        wire->report(live_event::Audio{Bytes(60 * 48'000, 1)});
    EXPECT_LE(player.unplayed(), ConversationTurn::mostUnplayed + 1min);
}

TEST_F(SessionWordsTest, theModeFollowsTheUserAlone)
{
    makeActive();
    const auto ask = [this](const std::string& mode) {
        static int calls = 0;
        sentSince();
        callTool("mode_" + std::to_string(++calls), "set_mode", {{"mode", mode}});
        scheduler.advance(300ms); // What was said may have a next piece.
        return lastOf(sentSince());
    };
    EXPECT_NE(
        ask("do").find("They haven't asked to switch. Stay in guide mode; only they change it"), std::string::npos);
    controller->submitTyped(
        {{{"Do it for me.", true}, {" What is this?", false}}, true}); // Pasted words are not theirs.
    EXPECT_NE(ask("do").find("refused"), std::string::npos);
    hearAssistant("Just do it for me, you say?", 1s);
    EXPECT_NE(ask("do").find("refused"), std::string::npos);
    wire->report(live_event::InputTranscript{"do it for me please"});
    EXPECT_NE(ask("do").find(R"({"status":"switched","mode":"do"})"), std::string::npos);
    EXPECT_EQ(controller->helpMode(), HelpMode::do_);
    EXPECT_NE(ask("do").find("refused"), std::string::npos); // The words are used up.
    EXPECT_NE(ask("fast").find("mode must be one of guide, auto and do."), std::string::npos);
    controller->setHelpMode(HelpMode::auto_);
    EXPECT_NE(lastSent().find("They have switched to auto mode."), std::string::npos);
    EXPECT_NE(ask("guide").find("Stay in Auto; only they change it."), std::string::npos);
}

TEST_F(SessionWordsTest, afterManyChangesTheUserHasASay)
{
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"typed",
            [this] {
                controller->submitTyped({{{"Yes, go on.", false}}, false});
            }},
        {"spoken", [this] { wire->report(live_event::InputTranscript{"yes go on"}); }},
        {"spoken, and nobody tells the words", [this] { speak(); }},
        {"nothing", [] {}},
    };
    const auto changes = [this](const std::string& name) {
        for (int index = 0; index < 100; ++index)
            callTool(name + std::to_string(index), "keep_note");
        return std::exchange(replies, {}).size();
    };
    for (const auto& [name, say] : rows) {
        SCOPED_TRACE(name);
        makeActive();
        EXPECT_EQ(changes("a"), 20U);
        const Lines sent = sentSince();
        EXPECT_TRUE(std::ranges::any_of(
            sent, [](const std::string& line) { return line.find("Shall I go on?") != line.npos; }));
        say();
        EXPECT_EQ(changes("b"), name == std::string_view("nothing") ? 0U : 10U); // Thirty within a minute.
    }
}

TEST_F(SessionWordsTest, theModeWaitsForWordsThatAreReportedLate)
{
    struct Row {
        const char* name;
        Steps before;
        Steps after; ///< The call.
        std::chrono::milliseconds wait; ///< Until it is decided; nothing was decided before.
        const char* answer;
    };
    const Step said = [this] { speak(); };
    const Step ended = [this] { controller->stop("enough"); };
    const Step echoed = [this] { wire->report(live_event::OutputTranscript{"Do it for me"}); };
    const Row rows[] = {
        {"words after the call", {said}, {hear("do it for me")}, 300ms, "switched"},
        {"in pieces on both sides of it", {said, hear("do it")}, {hear(" for me please")}, 300ms, "switched"},
        {"what follows takes it back", {hear("do it for me")}, {hear(", no, just show me")}, 300ms, "refused"},
        {"none come", {said}, {}, 1500ms, "refused"},
        {"nobody spoke", {}, {}, 0ms, "refused"},
        {"only the model says so", {said}, {echoed}, 1500ms, "refused"},
        {"the conversation ends first", {said}, {ended}, 0ms, ""},
    };
    const auto count = [](const Lines& lines, const char* start) {
        return std::ranges::count_if(lines, [start](const auto& line) { return line.starts_with(start); });
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        makeActive();
        carryOut(row.before);
        sentSince();
        saidSince();
        callTool("mode_1", "set_mode", {{"mode", "do"}});
        carryOut(row.after);
        if (row.wait > 0ms) {
            scheduler.advance(row.wait - 1ms);
            EXPECT_EQ(count(wire->sent, "tool "), 0);
            scheduler.advance(1ms);
        }
        EXPECT_EQ(count(wire->sent, "tool "), *row.answer ? 1 : 0);
        EXPECT_EQ(controller->helpMode(), row.answer == std::string("switched") ? HelpMode::do_ : HelpMode::guide);
        EXPECT_EQ(count(saidSince(), "result"), 1) << "answered once in each case";
    }
}

TEST_F(SessionWordsTest, wordsThatComeAfterTheirAnswerAskForNothing)
{
    makeActive();
    speak();
    callTool("c1", "keep_note");
    replies.at(0).answer({{"status", "kept"}});
    hearAssistant("Kept.", 500ms);
    wire->report(live_event::BackendIdle{});
    scheduler.advance(2s);
    sentSince();
    wire->report(live_event::InputTranscript{"keep"});
    wire->report(live_event::InputTranscript{" a note"});
    scheduler.advance(1s);
    EXPECT_FALSE(controller->isTurnOpen());
    EXPECT_EQ(lastOf(saidSince()), "spoken: keep a note");
    EXPECT_EQ(
        controller->conversation(), (std::deque<LiveHistoryEntry>{{"user", "keep a note"}, {"assistant", "Kept."}}));
    scheduler.advance(12s);
    EXPECT_TRUE(sentSince().empty());
}

TEST_F(SessionWordsTest, whatTheProgramHasToTellWaitsForAQuietMoment)
{
    enum class By { model, modelLater, device };
    struct Row {
        const char* name;
        Steps before;
        Steps after;
        By told;
    };
    const Step closed = [this] { wire->closeWith({}); };
    const Step lost = [this] { lose(); };
    const Step ready = [this] { becomeReady(); };
    const Step ended = [this] { controller->stop("enough"); };
    const Step tale = [this] { hearAssistant("A tale.", 5s); };
    const Row rows[] = {
        {"quiet", {}, {}, By::model},
        {"the voice sounds", {tale}, {pass(7s)}, By::modelLater},
        {"it rests", {pass(16s), closed}, {ready, pass(1s)}, By::modelLater},
        {"it cannot wake", {pass(16s), closed}, {pass(20s)}, By::device},
        {"the connection is lost", {lost}, {pass(600ms), ready, pass(1s)}, By::modelLater},
        {"there is no conversation", {ended}, {}, By::device},
        {"the conversation ends first", {tale}, {ended}, By::device},
    };
    const auto told = [this] {
        const Lines sent = sentSince();
        return std::count(sent.begin(), sent.end(),
            "message [Quorvell app event] This has just come due. Tell them: “Reminder: call 'Mum'.”. Say it now, in "
            "one short sentence, and take up what they answer.");
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        replies.clear();
        synthesiser = {};
        makeActive();
        silence(1s);
        carryOut(row.before);
        controller->announce("Reminder: call “Mum”.");
        EXPECT_EQ(told(), row.told == By::model);
        carryOut(row.after);
        EXPECT_EQ(told(), row.told == By::modelLater);
        const Lines said = saidSince();
        EXPECT_EQ(std::count(said.begin(), said.end(), "said: Reminder: call “Mum”."), row.told == By::device);
        EXPECT_EQ(synthesiser.said.find("Reminder: call") != std::string::npos, row.told == By::device);
    }
    makeActive();
    controller->announce("Reminder: call “Mum”.");
    lose(); // While it is told: whoever takes over is told again.
    scheduler.advance(600ms);
    becomeReady();
    EXPECT_EQ(told(), 1);
}

TEST_F(SessionWordsTest, whatTheModelThinksIsShownAndNeverSaid)
{
    makeActive();
    type("when am I free");
    saidSince();
    for (const char* piece : {"**Looking", " at the calendar**\n\n", "", "Friday is full."})
        wire->report(live_event::Thinking{piece});
    EXPECT_EQ(saidSince(),
        (Lines{"thought: Looking", "thought: Looking at the calendar", "thought: Looking at the calendar",
            "thought: Friday is full."}));
    hearAssistant("On Monday.", 1s);
    wire->report(live_event::BackendIdle{});
    scheduler.advance(2s);
    EXPECT_EQ(saidSince(), (Lines{"words: On Monday.", "said: On Monday.", "turn answered"}));
    EXPECT_EQ(controller->conversation().size(), 2U);
    type("thanks");
    EXPECT_EQ(saidSince().at(0), "thought: ");
}

TEST_F(SessionWordsTest, whatIsSaidWhileAToolRunsIsNotTakenForAnsweredByItsResult)
{
    for (const bool isTakenUp : {false, true}) {
        SCOPED_TRACE(isTakenUp);
        replies.clear();
        makeActive();
        wire->report(live_event::InputTranscript{"buy milk"});
        callTool("c1", "keep_note");
        speak();
        wire->report(live_event::InputTranscript{"and bread"});
        replies.at(0).answer({{"status", "kept"}});
        if (isTakenUp)
            callTool("c2", "keep_note");
        hearAssistant("Milk is noted.", 1s);
        wire->report(live_event::BackendIdle{});
        sentSince();
        scheduler.advance(20s);
        const Lines sent = sentSince();
        EXPECT_EQ(std::count_if(sent.begin(), sent.end(),
                      [](const auto& line) {
                          return line.starts_with("message [Quorvell app event] They said: “buy milk and bread”. The "
                                                  "last of it may not have been taken up. keep_note {}");
                      }),
            isTakenUp ? 0 : 1);
    }
}

} // namespace
} // namespace quorvell
