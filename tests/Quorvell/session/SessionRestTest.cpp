// SPDX-License-Identifier: MIT
// Silence: resting, waking, stopping.
#include "SessionBench.h"

namespace quorvell {
namespace {

class SessionRestTest : public SessionBench {
protected:
    SessionRestTest() { own({"keep_note", "click", "execute_connected_tool"}); }
    void rest()
    {
        makeActive();
        scheduler.advance(16s);
        ASSERT_EQ(controller->doze(), Doze::dozing);
        wire->closeWith({});
        saidSince();
    }
};

TEST_F(SessionRestTest, restsOnceQuietHasLastedLongEnough)
{
    makeActive();
    scheduler.advance(15s);
    EXPECT_EQ(controller->doze(), Doze::awake);
    scheduler.advance(1s);
    EXPECT_EQ(controller->doze(), Doze::dozing);
    EXPECT_EQ(controller->phase(), SessionPhase::active);
    EXPECT_EQ(lastSent(), "close");
    EXPECT_TRUE(dozeListener.isListening());
    wire->closeWith({}); // It was asked for: nothing is mended, nothing has ended.
    scheduler.advance(1s);
    EXPECT_EQ(saidSince(), (Lines{"dozing"}));
    silence(400ms);
    EXPECT_GT(dozeListener.bytes, 0U);
    scheduler.advance(284s); // 300 s since the last activity, all of it at rest but the first 15.
    EXPECT_EQ(controller->phase(), SessionPhase::idle);
    scheduler.settle();
    EXPECT_EQ(saidSince(), (Lines{"awake", "idle", "ended quiet for a while, resting"}));
    EXPECT_FALSE(dozeListener.isListening());
    EXPECT_EQ(scheduler.pendingTimers(), 0U);
    EXPECT_EQ(connectionsMade, 1);
    EXPECT_EQ(controller->usage().dozes, 1);
}

TEST_F(SessionRestTest, whatGoesOnKeepsItAwake)
{
    struct Row {
        const char* name;
        std::function<void()> happens;
        std::chrono::milliseconds endsAfter; ///< Zero: it rests, or is active after two minutes.
        Doze dozeAt17s;
    };
    const auto call = [this](const char* tool) {
        return [this, tool] {
            wire->report(live_event::InputTranscript{"please"});
            callTool("c1", tool);
        };
    };
    const Row rows[] = {
        {"highlighted", [this] { controller->showTarget("button", [] { return true; }); }, 241s, Doze::awake},
        {"the highlight disappears", [this] { controller->showTarget("button", [] { return false; }); }, 0s,
            Doze::dozing},
        {"muted", [this] { controller->setMuted(Ear::Muting::muted); }, 601s, Doze::awake},
        {"a consent is pending", [this] { controller->noteConsent(SessionController::Consent::pending); }, 121s,
            Doze::awake},
        {"a tool runs", call("execute_connected_tool"), 121s, Doze::awake},
        {"an action runs", call("click"), 0s, Doze::awake},
        {"the device itself speaks", [this] { synthesiser.isSaying = true; }, 0s, Doze::awake},
        {"sound still plays", [this] { hearAssistant("A long tale.", 30s); }, 0s, Doze::awake},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        replies.clear();
        synthesiser.isSaying = false;
        makeActive();
        row.happens();
        scheduler.advance(17s);
        EXPECT_EQ(controller->doze(), row.dozeAt17s);
        scheduler.advance((row.endsAfter == 0s ? 29s : row.endsAfter - 1s) - 17s);
        EXPECT_EQ(controller->phase(), SessionPhase::active);
        scheduler.advance(2s);
        EXPECT_EQ(controller->phase(), row.endsAfter == 0s ? SessionPhase::active : SessionPhase::idle);
    }
    EXPECT_EQ(controller->doze(), Doze::awake);
    scheduler.advance(16s);
    EXPECT_EQ(controller->doze(), Doze::dozing); // 15 s after the last of the tale.
}

TEST_F(SessionRestTest, wordsWakeItAndReachTheModelOnce)
{
    rest();
    dozeListener.hear("what time is it");
    EXPECT_EQ(connectionsMade, 2);
    EXPECT_FALSE(dozeListener.isListening());
    EXPECT_EQ(wire->setup.history, std::vector<LiveHistoryEntry>{});
    speak(); // Said while it wakes.
    EXPECT_EQ(wire->audioChunks, 0);
    sentSince();
    becomeReady();
    const Lines sent = sentSince();
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_TRUE(
        sent[0].starts_with("message [Quorvell app event] They just said: “what time is it”. (Quorvell was rest"));
    EXPECT_EQ(sent[1], "pause");
    EXPECT_EQ(wire->audioChunks, 41);
    EXPECT_TRUE(log.has("heard_while_resting"));
    EXPECT_FALSE(log.has("what time"));
    EXPECT_EQ(saidSince(), (Lines{"spoken: what time is it", "waking", "awake"}));

    rest();
    controller->submitTyped({{{"hello"}}, false}); // Typing wakes it too, and the app's own messages.
    EXPECT_EQ(controller->doze(), Doze::waking);
    controller->send({.text = "[Quorvell app event] A reminder is due."});
    sentSince();
    becomeReady();
    EXPECT_EQ(sentSince(),
        (Lines{"message [They typed] (your reply is shown as text, not spoken) hello",
            "message [Quorvell app event] A reminder is due."}));
}

TEST_F(SessionRestTest, aSoundAtRestOpensTheConnectionThatItsWordsWillNeed)
{
    struct Row {
        const char* name;
        Steps between; ///< The sound and its words.
        Steps after; ///< Its words.
        int connections; ///< Made since it rests.
    };
    const Step ready = [this] { becomeReady(); };
    const Step lost = [this] { lose(); };
    const Step noise = [this] { dozeListener.noticeOnset(); };
    const Row rows[] = {
        {"ready before the words", {ready}, {}, 1},
        {"ready after the words", {}, {ready}, 1},
        {"lost before the words", {ready, lost}, {ready}, 2},
        {"lost after the words", {}, {lost, pass(1s), ready}, 2},
        {"a second sound keeps it", {ready, pass(14s), noise, pass(14s)}, {}, 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        rest();
        const int made = connectionsMade;
        dozeListener.noticeOnset();
        carryOut(row.between);
        EXPECT_EQ(controller->doze(), Doze::dozing);
        dozeListener.hear("what time is it");
        carryOut(row.after);
        EXPECT_EQ(controller->doze(), Doze::awake);
        EXPECT_EQ(connectionsMade, made + row.connections);
        EXPECT_TRUE(lastSent().starts_with("message [Quorvell app event] They just said: “what time is it”."));
        EXPECT_EQ(controller->usage().prepared, 1);
    }
}

TEST_F(SessionRestTest, noiseAtRestOpensFewConnectionsAndLeavesNone)
{
    rest();
    dozeListener.noticeOnset();
    becomeReady();
    EXPECT_EQ(sentSince().size(), 1U); // Opened, and told nothing.
    const double talked = controller->usage().connectedSeconds;
    wire->report(live_event::BilledSeconds{2});
    scheduler.advance(15s);
    EXPECT_EQ(sentSince(), (Lines{"close"}));
    wire->report(live_event::BilledSeconds{3});
    wire->closeWith({});
    EXPECT_EQ(controller->usage().billedSeconds, 3);
    EXPECT_EQ(controller->usage().connectedSeconds, talked + 15);
    for (int count = 0; count < 40; ++count) {
        const int made = connectionsMade;
        dozeListener.noticeOnset();
        scheduler.advance(16s);
        if (connectionsMade > made)
            wire->closeWith({});
    }
    EXPECT_EQ(connectionsMade, 1 + SessionLimits{}.preparedPerHour);
    for (int minute = 0; minute < 50; ++minute) {
        scheduler.advance(1min);
        dozeListener.noticeOnset();
    }
    EXPECT_GT(connectionsMade, 1 + SessionLimits{}.preparedPerHour);
    controller->stop("enough");
    wire->closeWith({});
    scheduler.settle();
    EXPECT_EQ(scheduler.pendingTimers(), 0U);
    EXPECT_EQ(FakeLiveConnection::living.size(), 0U);
}

TEST_F(SessionRestTest, wakingThatTakesTooLongIsSaidAndLeavesItUsable)
{
    rest();
    dozeListener.hear("call mum");
    lose(); // Tried again within the limit.
    scheduler.advance(1s);
    EXPECT_EQ(connectionsMade, 3);
    scheduler.advance(18'900ms);
    EXPECT_EQ(controller->doze(), Doze::waking);
    scheduler.advance(100ms);
    EXPECT_EQ(saidSince(),
        (Lines{"spoken: call mum", "waking", "dozing", "turn broken off",
            "problem: Quorvell could not connect again in time. Check the network, then say this again: “call mum”."}));
    EXPECT_EQ(synthesiser.said.substr(0, 26), "Quorvell could not connect");
    synthesiser.isSaying = false;
    EXPECT_TRUE(dozeListener.isListening());
    wire->report(live_event::SetupComplete{"late"});
    EXPECT_EQ(controller->doze(), Doze::dozing);
    dozeListener.hear("call dad");
    sentSince();
    becomeReady();
    EXPECT_EQ(sentSince().size(), 1U);
    EXPECT_EQ(controller->doze(), Doze::awake);
}

TEST_F(SessionRestTest, whereNobodyCanListenAtRestItStaysAwakeUntilTheNextBeginning)
{
    rest();
    dozeListener.fail("No recogniser is installed.");
    becomeReady();
    EXPECT_TRUE(log.has("rest_failed"));
    EXPECT_EQ(saidSince(), (Lines{"problem: No recogniser is installed.", "waking", "awake"}));
    synthesiser.isSaying = false;
    scheduler.advance(100s);
    EXPECT_EQ(controller->doze(), Doze::awake);
    scheduler.advance(10s);
    EXPECT_EQ(controller->phase(), SessionPhase::idle); // 120 s after the last activity, which was before the rest.
    controller->begin();
    becomeReady();
    scheduler.advance(17s);
    EXPECT_EQ(controller->doze(), Doze::dozing);
    controller.reset();
    EXPECT_FALSE(dozeListener.isListening() || capture.isOpen()); // Nobody would be there to hear of it.
}

} // namespace
} // namespace quorvell
