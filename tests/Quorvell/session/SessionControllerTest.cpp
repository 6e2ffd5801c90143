// SPDX-License-Identifier: MIT
// The story of a conversation: how it begins, what is asked and answered, how it ends.
// Catches conversations that hang, answer twice, listen to the wrong one, or end without a word.
#include "Quorvell/session/SessionController.h"

#include "SessionBench.h"

namespace quorvell {
namespace {

class SessionControllerTest : public SessionBench {
protected:
    SessionControllerTest() { own({"keep_note"}); }
};

SessionSettings shown()
{
    SessionSettings settings;
    settings.replies = SessionSettings::Replies::shown;
    settings.restsWhenQuiet = false;
    return settings;
}

TEST_F(SessionControllerTest, aTypedRequestWalksThroughToItsReply)
{
    make(shown()).submitTyped({{{"keep a note: buy milk "}}, false});
    EXPECT_EQ(wire->sent, (Lines{"open set_mode keep_note"}));
    EXPECT_NE(wire->setup.toolInstructions, "");
    EXPECT_NE(wire->setup.voiceInstructions.find("Saturday"), std::string::npos);

    wire->report(live_event::SetupComplete{"sess_1"});
    EXPECT_EQ(lastSent(), "message [They typed] (your reply is shown as text, not spoken) keep a note: buy milk");

    wire->report(live_event::ToolCall{{{"call_1", "keep_note", {{"title", "buy milk"}}}}});
    ASSERT_EQ(replies.size(), 1U);
    replies.at(0).answer({{"status", "kept"}});
    EXPECT_EQ(lastSent(), R"(tool call_1 {"status":"kept"})");
    wire->reportText("Noted: buy milk.");
    scheduler.advance(5s); // The backend still works on it.
    wire->report(live_event::OutputTranscript{"Noted"});
    wire->report(live_event::BackendIdle{});
    scheduler.settle();
    wire->report(live_event::OutputTranscript{": buy milk."});
    EXPECT_FALSE(controller->isTurnOpen()); // The voice is late, and nobody listens to it.
    EXPECT_EQ(saidSince(),
        (Lines{"connecting", "typed: keep a note: buy milk", "active", "call keep_note", R"(result {"status":"kept"})",
            "said: Noted: buy milk.", "turn answered"}));
    EXPECT_EQ(log.text.find("milk"), std::string::npos) << log.text;
    EXPECT_EQ(controller->conversation(),
        (std::deque<LiveHistoryEntry>{{"user", "keep a note: buy milk"}, {"assistant", "Noted: buy milk."}}));
}

TEST_F(SessionControllerTest, aSpokenTurnEndsOnceItsSoundHasBeenPlayed)
{
    makeActive();
    wire->report(live_event::InputTranscript{"what is "});
    wire->report(live_event::InputTranscript{"it"});
    wire->report(live_event::Delegated{"d1"});
    wire->report(live_event::BackendIdle{});
    wire->report(live_event::OutputTranscript{"A "});
    wire->report(live_event::OutputTranscript{"test."});
    wire->report(live_event::Audio{Bytes(48000 * 3)}); // Three seconds.
    scheduler.advance(3699ms);
    EXPECT_EQ(saidSince(), (Lines{"spoken: what is it", "words: A ", "words: test."}));
    scheduler.advance(1ms);
    EXPECT_EQ(saidSince(), (Lines{"said: A test.", "turn answered"}));
}

TEST_F(SessionControllerTest, theGreetingIsATurnAndGivesWayToAWaitingRequest)
{
    SessionSettings settings;
    settings.greeting = SessionSettings::Greeting::spoken;
    settings.userName = "Asha";
    makeActive(settings);
    EXPECT_EQ(lastSent(),
        "voice Asha has just called Quorvell over and is looking at their desktop. Say hello warmly and ask what "
        "they'd like to do, in one short sentence.");
    wire->report(live_event::OutputTranscript{"Hello Asha!"});
    scheduler.advance(1s);
    EXPECT_EQ(saidSince(), (Lines{"words: Hello Asha!", "said: Hello Asha!", "turn answered"}));

    settings.replies = SessionSettings::Replies::shown;
    makeActive(settings);
    EXPECT_EQ(lastSent().substr(0, 60), "message [Quorvell app event] Asha just called you over. They");
    make(settings).submitTyped({{{"hi"}}, true});
    wire->report(live_event::SetupComplete{"sess_1"});
    EXPECT_EQ(lastSent(), "message [They typed] hi");
}

TEST_F(SessionControllerTest, anUnansweredTurnIsGivenUpAfterPatience)
{
    struct Row {
        const char* name;
        std::function<void(FakeLiveConnection&)> happens;
        Lines said;
    };
    const Row rows[] = {
        {"silence", [](auto&) {}, {"turn unanswered"}},
        {"the backend has nothing to say", [](auto& w) { w.report(live_event::BackendIdle{}); }, {"turn unanswered"}},
        {"the service reports a problem",
            [](auto& w) {
                w.report(live_event::BackendIdle{});
                w.report(live_event::ServerError{"overloaded", "Too busy."});
            },
            {"problem: Too busy.", "turn answered"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        makeActive(shown()).submitTyped({{{"hello"}}, false});
        saidSince();
        row.happens(*wire);
        scheduler.advance(60s);
        EXPECT_EQ(saidSince(), row.said);
        EXPECT_FALSE(controller->isTurnOpen());
    }
}

TEST_F(SessionControllerTest, aToolThatAnswersLateAnswersNobodyElse)
{
    makeActive();
    callTool("call_1", "keep_note");
    ASSERT_EQ(replies.size(), 1U);
    controller->stop("enough");
    controller->begin();
    becomeReady();
    sentSince();
    replies.at(0).answer({{"status", "kept"}});
    EXPECT_TRUE(sentSince().empty()); // The new conversation never asked.
    callTool("call_2", "keep_note");
    controller.reset();
    replies.clear(); // A reply that outlives the session is harmless.
}

TEST_F(SessionControllerTest, aConversationThatCannotBeginIsToldInOneSentence)
{
    make(shown()).submitTyped({{{"hello"}}, false});
    wire->closeWith({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
    EXPECT_EQ(saidSince(),
        (Lines{"connecting", "typed: hello", "idle", "turn broken off", "ended: Key refused. unsent: hello"}));
    scheduler.advance(2min);
    EXPECT_EQ(scheduler.pendingTimers(), 0U);
    EXPECT_EQ(connectionsMade, 1);

    controller->submitTyped({{{"once more"}}, false}); // The next request begins anew and knows what was said.
    EXPECT_EQ(wire->setup.history, (std::vector<LiveHistoryEntry>{{"user", "hello"}}));
    becomeReady();
    wire->closeWith({.code = 1006, .reason = "untrusted", .mustUserAct = true, .sentence = "Not trusted."});
    EXPECT_EQ(lastOf(saidSince()), "ended: Not trusted."); // And no doubt whether it was done.
}

TEST_F(SessionControllerTest, stopEndsOnceTheConnectionHasClosed)
{
    makeActive();
    controller->stop("end of input");
    EXPECT_EQ(lastSent(), "close");
    EXPECT_EQ(saidSince(), (Lines{"idle"}));
    wire->report(live_event::OutputTranscript{"late words"});
    wire->closeWith({.code = 1000, .reason = "client_requested"});
    scheduler.settle();
    EXPECT_EQ(saidSince(), (Lines{"ended end of input"}));
    controller->stop("again");
    EXPECT_TRUE(saidSince().empty());
}

TEST_F(SessionControllerTest, silenceIsHeldBackAndSpeechWaitsForTheConnection)
{
    struct Row {
        SessionSettings::Microphone microphone;
        int chunks;
        int pauses;
    };
    // Through the gate go 8 quiet chunks held before the onset, the 13 loud ones, and 20 quiet ones before it closes.
    for (const Row& row :
        {Row{SessionSettings::Microphone::onlySpeech, 41, 1}, {SessionSettings::Microphone::everything, 63, 0}}) {
        SessionSettings settings;
        settings.microphone = row.microphone;
        settings.greeting = SessionSettings::Greeting::spoken;
        makeActive(settings);
        sentSince();
        speak();
        EXPECT_EQ(wire->audioChunks, row.chunks);
        EXPECT_EQ(wire->audioBytes, row.chunks * 1920);
        const Lines sent = sentSince();
        EXPECT_EQ(std::count(sent.begin(), sent.end(), "pause"), row.pauses);

        make(settings).begin();
        speak();
        EXPECT_EQ(wire->audioChunks, 0);
        becomeReady();
        EXPECT_EQ(wire->audioChunks, 41);
        EXPECT_EQ(sentSince(), (Lines{"open set_mode keep_note", "pause"})); // Whoever has asked is not greeted.
    }
}

TEST_F(SessionControllerTest, theMicrophoneIsOpenOnlyForWhomItIsMeantTo)
{
    make();
    EXPECT_FALSE(capture.isOpen());
    controller->begin();
    becomeReady();
    EXPECT_TRUE(capture.isOpen());
    controller->setMuted(Ear::Muting::muted);
    EXPECT_FALSE(capture.isOpen());
    speak();
    EXPECT_EQ(wire->audioChunks, 0);
    controller->setMuted(Ear::Muting::heard);
    EXPECT_TRUE(capture.isOpen());
    controller->stop("enough");
    EXPECT_FALSE(capture.isOpen());

    SessionSettings settings;
    settings.listening = SessionSettings::Listening::pushToTalk;
    make(settings).pushToTalk(SessionController::Key::pressed);
    becomeReady();
    EXPECT_TRUE(capture.isOpen());
    sound(400ms, 200); // A whisper goes through a held key.
    controller->pushToTalk(SessionController::Key::released);
    sound(400ms, 200); // The last syllable belongs to it, what follows does not.
    EXPECT_FALSE(capture.isOpen());
    EXPECT_EQ(wire->audioChunks, 15 + Ear::quietChunks); // In which a service hears that it is over.
    EXPECT_EQ(lastOf(sentSince()), "pause");
}

TEST_F(SessionControllerTest, whoSpeaksOverTheVoiceSilencesIt)
{
    makeActive();
    type("tell me a story");
    wire->report(live_event::BackendIdle{});
    silence(1s);
    saidSince();
    hearAssistant("Once upon a time ", 1s);
    hearAssistant("there was a king.", 1s);
    scheduler.advance(1500ms);
    sentSince();
    sound(80ms, 12000);
    EXPECT_EQ(player.stops, 1);
    EXPECT_EQ(player.unplayed(), 0ms);
    EXPECT_EQ(sentSince(), (Lines{"drop stale"}));
    hearAssistant(" He had a", 1s); // Still on its way when the user spoke.
    EXPECT_EQ(player.unplayed(), 0ms);
    EXPECT_EQ(saidSince(),
        (Lines{"words: Once upon a time ", "words: there was a king.", "said: Once upon a time there was",
            "turn interrupted"}));
    EXPECT_EQ(controller->conversation().at(1).text, "Once upon a time there was");

    wire->report(live_event::InputTranscript{"stop"});
    hearAssistant("All right.", 1s);
    EXPECT_EQ(player.unplayed(), 1s);
    scheduler.advance(2s);
    EXPECT_EQ(saidSince(), (Lines{"spoken: stop", "words: All right.", "said: All right.", "turn answered"}));
}

TEST_F(SessionControllerTest, whoSpeaksBetweenTwoPiecesOfTheVoiceSpeaksOverIt)
{
    makeActive();
    silence(1s);
    hearAssistant("Three.", 1s);
    scheduler.advance(1s); // Nothing is left to play.
    sound(80ms, 12000);
    hearAssistant("Four.", 1s);
    EXPECT_EQ(player.unplayed(), 0ms);
}

TEST_F(SessionControllerTest, theUserStopsWhatIsSaidAndDone)
{
    own({"click"});
    makeActive();
    wire->report(live_event::InputTranscript{"click it"});
    callTool("call_1", "click");
    hearAssistant("I will ", 2s);
    saidSince();
    controller->interrupt();
    EXPECT_EQ(player.unplayed(), 0ms);
    EXPECT_FALSE(controller->tools().isActing());
    EXPECT_EQ(saidSince(), (Lines{"turn interrupted"}));
    EXPECT_EQ(controller->phase(), SessionPhase::active);
}

TEST_F(SessionControllerTest, whoeverHasUsedUpTheDayIsToldAndNotConnected)
{
    SessionSettings settings;
    settings.dailyMinutes = std::chrono::minutes(1);
    settings.restsWhenQuiet = false;
    makeActive(settings);
    scheduler.advance(59s);
    EXPECT_EQ(controller->phase(), SessionPhase::active);
    scheduler.advance(2s);
    EXPECT_EQ(controller->phase(), SessionPhase::idle);
    EXPECT_NE(
        saidSince().at(0).find("problem: Today's 1 minute of spoken conversation is used up."), std::string::npos);
    EXPECT_NE(synthesiser.said.find("used up"), std::string::npos);
    controller->submitTyped({{{"hello"}}, false});
    EXPECT_EQ(connectionsMade, 1);
    EXPECT_NE(lastOf(saidSince()).find("used up. Go on by typing (quorvell chat), or raise daily_minutes"),
        std::string::npos);
}

} // namespace
} // namespace quorvell
