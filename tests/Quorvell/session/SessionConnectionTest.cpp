// SPDX-License-Identifier: MIT
// Connections that are lost, mended and replaced: no request is lost, none is run twice, nobody notices.
#include "SessionBench.h"

namespace quorvell {
namespace {

using History = std::vector<LiveHistoryEntry>;

class SessionConnectionTest : public SessionBench {
protected:
    SessionConnectionTest() { own({"keep_note"}); }
    /// A conversation that does not rest.
    void begin()
    {
        SessionSettings settings;
        settings.restsWhenQuiet = false;
        makeActive(settings);
    }
    void exchange(const std::string& question, const std::string& answer)
    {
        wire->report(live_event::InputTranscript{question});
        hearAssistant(answer, 1s);
        wire->report(live_event::BackendIdle{});
        scheduler.advance(2s);
    }
    void loseAndMend()
    {
        lose();
        scheduler.advance(600ms);
        sentSince();
        becomeReady();
    }
    /// What the connection that took over was told, without the beginning that they all have.
    Lines handedOver()
    {
        Lines texts = sentSince();
        for (std::string& text : texts)
            if (const std::string start = "message [Quorvell app event] "; text.starts_with(start))
                text.erase(0, start.size());
        return texts;
    }
};

TEST_F(SessionConnectionTest, aLostConnectionIsMendedAndKnowsWhatWasSaid)
{
    begin();
    exchange("hello", "Hi.");
    saidSince();
    lose();
    EXPECT_EQ(controller->phase(), SessionPhase::active);
    scheduler.advance(600ms);
    EXPECT_EQ(connectionsMade, 2);
    EXPECT_EQ(wire->setup.history, (History{{"user", "hello"}, {"assistant", "Hi."}}));
    sentSince();
    becomeReady();
    EXPECT_TRUE(sentSince().empty());
    EXPECT_EQ(saidSince(), (Lines{"reconnecting", "steady"}));
    EXPECT_EQ(controller->usage().reconnections, 1);
    EXPECT_EQ(FakeLiveConnection::living.size(), 1U);
}

TEST_F(SessionConnectionTest, whatWasUnderWayIsHandedOver)
{
    struct Row {
        const char* name;
        Steps before;
        Steps meanwhile;
        Lines handedOver; ///< The beginnings.
        int audioChunks = 0;
    };
    const Step words = hear("buy milk");
    const Step spoken = [this] { speak(); };
    const Step typed = [this] { type("hi"); };
    const Step called = [this] { callTool("c1", "keep_note"); };
    const Step kept = [this] { replies.at(replies.size() - 1).answer({{"status", "kept"}}); };
    const Step cutShort = [this] { hearAssistant("I will", 500ms); };
    const Step answered = [this] { hearAssistant("Done.", 2s); };
    const std::string renewed = "They said: “buy milk”. The connection was renewed before that was finished. ";
    const Row rows[] = {
        {"nothing", {}, {}, {}},
        {"words without their sound", {words}, {},
            {"They said: “buy milk”. It wasn't passed on to you, so nothing has been done about it yet."}},
        {"speech of which some words came back", {spoken, words}, {}, {"pause"}, 41},
        {"typed before", {typed}, {}, {"They said: “hi”. It wasn't passed on to you"}},
        {"a tool that runs", {words, called}, {}, {renewed + "keep_note {} is still"}},
        {"a tool that answers in the gap", {words, called}, {kept}, {renewed + R"(keep_note {} answered {"s)"}},
        {"an answer cut short", {words, cutShort}, {}, {renewed + "Of your answer they heard: “I w"}},
        {"an answer that was complete", {words, answered, pass(1500ms)}, {}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        replies.clear();
        begin();
        carryOut(row.before);
        lose();
        carryOut(row.meanwhile);
        scheduler.advance(600ms);
        sentSince();
        becomeReady();
        const Lines told = handedOver();
        ASSERT_EQ(told.size(), row.handedOver.size());
        for (std::size_t index = 0; index < told.size(); ++index)
            EXPECT_TRUE(told[index].starts_with(row.handedOver[index])) << told[index];
        EXPECT_EQ(wire->audioChunks, row.audioChunks);
        loseAndMend(); // And lost once more before anything came back.
        EXPECT_LE(handedOver().size(), std::max<std::size_t>(1, row.handedOver.size()));
        EXPECT_EQ(wire->audioChunks, row.audioChunks);
    }
}

TEST_F(SessionConnectionTest, mendingEndsAfterEnoughAttemptsOrWhenTheUserMustAct)
{
    begin();
    jitter = 1;
    type("hello");
    saidSince();
    for (const auto wait : {1s, 2s, 4s, 8s, 8s}) {
        lose();
        scheduler.advance(wait - 1ms);
        const int made = connectionsMade;
        scheduler.advance(1ms);
        EXPECT_EQ(connectionsMade, made + 1);
    }
    lose();
    EXPECT_EQ(saidSince(),
        (Lines{"reconnecting", "idle", "turn broken off", "ended: Lost. What you asked last may not have been done."}));
    scheduler.advance(1h);
    EXPECT_EQ(scheduler.pendingTimers(), 0U);
    EXPECT_EQ(connectionsMade, 6);

    begin();
    type("hello");
    saidSince();
    wire->closeWith({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
    EXPECT_EQ(saidSince(), (Lines{"idle", "turn broken off", "ended: Key refused."})) << "it cannot have been done";

    begin();
    lose();
    controller->stop("enough"); // Nothing is left to close.
    scheduler.settle();
    EXPECT_EQ(saidSince(), (Lines{"reconnecting", "idle", "ended enough"}));
    EXPECT_EQ(scheduler.pendingTimers(), 0U);
}

TEST_F(SessionConnectionTest, aBusyServiceIsAskedAgainBeforeTheConversationBegins)
{
    struct Row {
        const char* name;
        std::chrono::milliseconds asked; ///< By the service.
        int refusals;
        std::chrono::milliseconds wait; ///< Until the next attempt.
        Lines said;
    };
    const std::string busy =
        "problem: The service is busy just now. Quorvell tries again by itself, and keeps what you "
        "have said.";
    const Row rows[] = {
        {"for a moment", 0ms, 1, 500ms, {"connecting", "typed: hello", busy, "active"}},
        {"for as long as it says", 20s, 2, 20s, {"connecting", "typed: hello", busy, "active"}},
        {"for too long", 31s, 1, 0ms,
            {"connecting", "typed: hello", "idle", "turn broken off", "ended: Busy. unsent: hello"}},
        {"for good", 0ms, 6, 500ms,
            {"connecting", "typed: hello", busy, "idle", "turn broken off", "ended: Busy. unsent: hello"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        make();
        saidSince();
        type("hello");
        for (int refusal = 0; refusal < row.refusals; ++refusal) {
            const int made = connectionsMade;
            wire->closeWith({.code = 503, .sentence = "Busy.", .retryAfter = row.asked});
            scheduler.advance(row.wait);
            if (controller->phase() != SessionPhase::idle) {
                EXPECT_EQ(connectionsMade, made + 1);
            }
        }
        if (controller->phase() != SessionPhase::idle) {
            becomeReady();
            EXPECT_EQ(lastOf(sentSince()), "message [They typed] hello");
        }
        EXPECT_EQ(saidSince(), row.said);
    }
}

TEST_F(SessionConnectionTest, afterASleepOfTheComputerTheConnectionIsMadeAnewBeforeAnybodyNotices)
{
    begin();
    exchange("hello", "Hi.");
    wire->report(live_event::InputTranscript{"buy milk"});
    wire->report(live_event::GoAway{});
    scheduler.advance(1s); // A standby is made; it sleeps as well.
    saidSince();
    scheduler.sleep(9s);
    scheduler.advance(1s);
    EXPECT_EQ(connectionsMade, 2) << "slow, not asleep";
    scheduler.sleep(1min);
    scheduler.advance(1s);
    EXPECT_EQ(connectionsMade, 3);
    EXPECT_EQ(FakeLiveConnection::living.size(), 3U);
    sentSince();
    becomeReady();
    EXPECT_TRUE(handedOver().at(0).starts_with("They said: “buy milk”."));
    EXPECT_EQ(saidSince(), (Lines{"spoken: buy milk"})) << "nothing of a loss";

    makeActive(); // One that was quiet, and may rest, needs no connection then.
    scheduler.sleep(1min);
    scheduler.advance(1s);
    EXPECT_EQ(saidSince(), Lines{"dozing"});
    EXPECT_EQ(connectionsMade, 4);
}

TEST_F(SessionConnectionTest, aServiceThatIsStuckIsGivenUpWithTheTurn)
{
    begin();
    type("buy milk");
    scheduler.advance(59s);
    EXPECT_EQ(connectionsMade, 1) << "it may be thinking";
    saidSince();
    scheduler.advance(1s);
    EXPECT_EQ(saidSince(), Lines{"turn unanswered"});
    EXPECT_EQ(connectionsMade, 2);
    sentSince();
    becomeReady();
    EXPECT_TRUE(handedOver().empty()) << "the user was told to ask again";
    type("buy milk");
    EXPECT_EQ(handedOver(), Lines{"message [They typed] buy milk"});

    begin();
    type("buy milk");
    speak();
    scheduler.advance(70s);
    becomeReady();
    EXPECT_EQ(wire->audioChunks, 0) << "nor is what was said meanwhile heard again";
}

TEST_F(SessionConnectionTest, isReplacedAtAQuietMomentOnceItIsToEnd)
{
    for (const LiveServerEvent& cause :
        {LiveServerEvent(live_event::GoAway{10s}), LiveServerEvent(live_event::ContextUsage{0.9})}) {
        begin();
        exchange("hello", "Hi.");
        const int made = connectionsMade;
        wire->report(cause);
        wire->report(live_event::InputTranscript{"tell me"});
        hearAssistant("A long story.", 70s);
        scheduler.advance(1s);
        ASSERT_EQ(connectionsMade, made + 1);
        becomeReady();
        scheduler.advance(63s);
        EXPECT_TRUE(log.has("rotation_deferred_too_long"));
        EXPECT_EQ(lastOf(before->sent).substr(0, 4), "open"); // Still the one in use.
        EXPECT_TRUE(std::find(before->sent.begin(), before->sent.end(), "close") == before->sent.end());
        silence(400ms); // The beginning of the next words is held by the gate across the switch.
        scheduler.advance(10s);
        EXPECT_EQ(lastOf(before->sent), "close");
        EXPECT_TRUE(
            lastOf(handedOver()).starts_with("This was said meanwhile, and is settled. They: “tell me” You: “A l"));
        before->closeWith({});
        sound(80ms, 12000);
        EXPECT_EQ(wire->audioChunks, 10);
        EXPECT_EQ(controller->usage().rotations, 1);
        EXPECT_EQ(lastOf(saidSince()), "turn answered"); // Nobody noticed.
        scheduler.settle();
        EXPECT_EQ(FakeLiveConnection::living.size(), 1U);
        controller->stop("enough");
    }
}

TEST_F(SessionConnectionTest, isReplacedAtItsAge)
{
    begin();
    controller->setMuted(Ear::Muting::muted);
    for (int minute = 0; minute < 25; ++minute) {
        scheduler.advance(1min);
        exchange("and", "Yes.");
    }
    EXPECT_EQ(connectionsMade, 2);
}

TEST_F(SessionConnectionTest, theStandbyTakesOverAtOnceWhenTheOtherIsLost)
{
    begin();
    wire->report(live_event::GoAway{});
    scheduler.advance(1s);
    before->report(live_event::InputTranscript{"buy milk"});
    wire->report(live_event::Diagnostic{"session_request_retried", {}});
    EXPECT_TRUE(log.has("session_request_retried")); // What goes on before it is ready is written down as well.
    becomeReady();
    sentSince();
    before->closeWith({.code = 1008, .reason = "limit"});
    EXPECT_TRUE(handedOver().at(0).starts_with("They said: “buy milk”."));
    EXPECT_EQ(connectionsMade, 2);

    begin();
    wire->report(live_event::GoAway{});
    scheduler.advance(1s);
    lose(); // The standby itself; it is warmed up again later.
    EXPECT_EQ(controller->phase(), SessionPhase::active);
    scheduler.advance(9s);
    EXPECT_EQ(connectionsMade, 4);
    scheduler.advance(2s);
    EXPECT_EQ(connectionsMade, 5);
}

TEST_F(SessionConnectionTest, aResumptionHandleStandsInForTheHistory)
{
    begin();
    exchange("hello", "Hi.");
    wire->report(live_event::ResumptionHandle{"old"});
    wire->report(live_event::ResumptionHandle{"h1"});
    scheduler.advance(1s);
    exchange("more", "Certainly.");
    lose();
    scheduler.advance(600ms);
    EXPECT_EQ(wire->sent.at(0).substr(0, 12), "open with h1");
    EXPECT_TRUE(wire->setup.history.empty());
    sentSince();
    becomeReady();
    EXPECT_TRUE(handedOver().at(0).starts_with("This was said meanwhile, and is settled. They: “more” You: “Certain"));

    wire->report(live_event::InputTranscript{"and now"});
    hearAssistant("Now this.", 1s);
    scheduler.advance(500ms);
    wire->report(live_event::ResumptionHandle{"h2"}); // Comes before the turn is over here.
    wire->report(live_event::BackendIdle{});
    scheduler.advance(2s);
    loseAndMend();
    EXPECT_TRUE(sentSince().empty());

    lose();
    scheduler.advance(600ms);
    lose(); // Refused, perhaps because of the handle.
    scheduler.advance(8s);
    EXPECT_EQ(wire->sent.at(0).substr(0, 9), "open set_");
    EXPECT_EQ(wire->setup.history.size(), 6U);
}

} // namespace
} // namespace quorvell
