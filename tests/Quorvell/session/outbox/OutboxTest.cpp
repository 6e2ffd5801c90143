// SPDX-License-Identifier: MIT
// Messages for a line that is not there yet, that is lost, or that others asked over.
#include "Quorvell/session/outbox/Outbox.h"

#include "Quorvell/session/outbox/Handover.h"
#include "Quorvell/session/outbox/ToolAnswers.h"
#include "SessionParts.h"

namespace quorvell {
namespace {

struct OutboxTest : SessionParts { };

TEST_F(OutboxTest, keepsItsMessagesForTheLineThatComes)
{
    outbox.send({.text = "one"});
    outbox.send({.text = "stale", .lateness = LiveMessageText::Lateness::worthless});
    outbox.sendTyped("hi", {.text = "They typed hi"});
    outbox.tell({.text = "note", .answer = LiveMessageText::Answer::notWanted});
    EXPECT_EQ(outbox.waitingTyped(), Lines{"hi"});
    EXPECT_FALSE(turn.isOpen());
    connect();
    outbox.deliverWaiting();
    EXPECT_EQ(sentSince(), (Lines{"message one", "message They typed hi", "message note"}));
    EXPECT_TRUE(outbox.isEmpty() && outbox.waitingTyped().empty() && turn.isOpen());
    outbox.deliverWaiting();
    outbox.send({.text = "now", .lateness = LiveMessageText::Lateness::worthless, .jpeg = Bytes(3)});
    EXPECT_EQ(sentSince(), Lines{"message now"});
    EXPECT_EQ(meter.usage().imagesSent, 1);
}

TEST_F(OutboxTest, sendsTheAppsOwnMessagesAgainWhereTheirTurnWasNotFinished)
{
    connect();
    outbox.send({.text = "first"});
    outbox.forgetSent(); // Its turn is over.
    outbox.send({.text = "second"});
    outbox.send({.text = "by the way", .answer = LiveMessageText::Answer::notWanted});
    disconnect();
    outbox.tell({.text = "third"});
    outbox.sendAgain();
    connect();
    outbox.deliverWaiting();
    EXPECT_EQ(sentSince(), (Lines{"message second", "message third"}));
}

TEST_F(OutboxTest, tellsOnTheDeviceWhatIsLostTwice)
{
    const auto loseTheLine = [this] {
        disconnect();
        outbox.sendAgain();
        connect();
        outbox.deliverWaiting();
    };
    connect();
    outbox.send({.text = "reminder", .sentences = {"Call the dentist.", "Water the plants."}});
    loseTheLine();
    outbox.send({.text = "by the way"});
    EXPECT_EQ(sentSince(), (Lines{"message reminder", "message by the way"}));
    EXPECT_TRUE(saidSince().empty());
    loseTheLine();
    EXPECT_EQ(saidSince(), (Lines{"said: Call the dentist.", "said: Water the plants."}));
    EXPECT_EQ(sentSince(), Lines{"message by the way"});
    loseTheLine();
    EXPECT_EQ(saidSince().size(), 1U) << "what has no words for the user is not lost in silence either";
    loseTheLine();
    EXPECT_TRUE(saidSince().empty() && sentSince().empty());
}

TEST_F(OutboxTest, complainsWhenTooMuchWaits)
{
    for (std::size_t count = 0; count <= Outbox::mostWaiting; ++count)
        outbox.tell({.text = "more"});
    EXPECT_EQ(saidSince().size(), 1U);
    EXPECT_NE(synthesiser.said.find("too much waits for it already"), std::string::npos);
    outbox.forget();
    EXPECT_TRUE(outbox.isEmpty());
}

TEST_F(OutboxTest, handsOverWhatWasUnfinishedOnceAndToldLaterWhatWasSettledElsewhere)
{
    turn.userTyped("buy milk", "buy milk");
    turn.backendStarted();
    handover.lineLost();
    EXPECT_TRUE(handover.isPending());
    connect();
    handover.lineMended();
    EXPECT_FALSE(handover.isPending());
    EXPECT_TRUE(sentSince().at(0).starts_with("message [Quorvell app event] They said: “buy milk”."));
    handover.lineMended();
    EXPECT_TRUE(sentSince().empty()) << "told once; the turn goes on";
    turn.breakOff();
    handover.turnClosed();
    EXPECT_TRUE(sentSince().at(0).starts_with("message [Quorvell app event] This was said meanwhile, and is settled."));
    handover.turnClosed();
    EXPECT_TRUE(sentSince().empty());
}

TEST_F(OutboxTest, givesAToolsAnswerToWhoeverAskedOrToWhoeverIsThere)
{
    const std::string event = "message [Quorvell app event] A call from before";
    struct Row {
        int linesAgo; ///< The line that asked.
        LiveResponseScheduling scheduling;
        std::string told; ///< How it begins; empty: nothing.
    };
    const auto idle = LiveResponseScheduling::whenIdle;
    const auto silent = LiveResponseScheduling::silent; // It was taken back.
    ToolAnswers given({log, lines, turn, outbox, handover});
    connect();
    given.begin();
    connect();
    connect();
    for (const Row& row : {Row{0, idle, "tool c1"}, {0, silent, "tool c1"}, {1, idle, event}, {1, silent, ""},
             {2, idle, ""}}) { // Of the conversation before.
        const tool_report::Answered answer{{{"c1", "keep_note", Json::object()}, {{"status", "kept"}}}, row.scheduling,
            lines.serial() - static_cast<std::uint64_t>(row.linesAgo)};
        given.give(answer, ToolAnswers::Conversation::other);
        EXPECT_EQ(sentSince().size(), row.linesAgo == 0 ? 1U : 0U) << "it is over for all others";
        given.give(answer, ToolAnswers::Conversation::active);
        const Lines sent = sentSince();
        ASSERT_EQ(sent.size(), row.told.empty() ? 0U : 1U);
        EXPECT_TRUE(sent.empty() || sent[0].starts_with(row.told)) << sent[0];
    }
}

} // namespace
} // namespace quorvell
