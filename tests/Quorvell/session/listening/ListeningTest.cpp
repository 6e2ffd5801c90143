// SPDX-License-Identifier: MIT
// The way of the voice to the model: what is given once, what again, what is cut short.
#include "Quorvell/session/listening/Listening.h"

#include "SessionParts.h"

namespace quorvell {
namespace {

struct ListeningTest : SessionParts {
    ListeningTest() { listening.begin(); }
};

TEST_F(ListeningTest, givesWhatNobodyReactedToOnceToEachLine)
{
    struct Row {
        const char* name;
        std::function<void()> reaction;
        bool isGivenAgain;
    };
    const Row rows[] = {
        {"nothing came back", [] {}, true},
        {"a tool was called", [this] { listening.modelActed(); }, false},
        {"a voice, perhaps about something else", [this] { listening.voiceReacted(); }, true},
        {"words, then a voice",
            [this] {
                listening.wordsCame("buy milk");
                listening.voiceReacted();
            },
            false},
        {"the user was told to say it again", [this] { listening.giveUp(); }, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        listening.begin();
        turn.end();
        speak();
        for (const int chunks : {41, row.isGivenAgain ? 41 : 0}) {
            connect();
            listening.flushHeldChunks();
            listening.flushHeldChunks();
            EXPECT_EQ(wire->audioChunks, chunks);
            EXPECT_EQ(listening.areWordsAwaited(), chunks > 0);
            row.reaction();
            disconnect();
            listening.lineLost();
        }
        EXPECT_EQ(synthesiser.said, "");
    }
}

TEST_F(ListeningTest, tellsWhereWhatWasSaidMayBeLost)
{
    connect();
    speak();
    speak();
    listening.modelActed(); // On one of them.
    disconnect();
    listening.lineLost();
    EXPECT_NE(synthesiser.said.find("may not have been heard"), std::string::npos);
}

TEST_F(ListeningTest, hearsAgainWhatIsTakenUpByNobody)
{
    struct Row {
        const char* name;
        std::function<void()> happens;
        bool isMissed;
    };
    const Row rows[] = {
        {"nothing happens", [] {}, true},
        {"it is answered", [this] { listening.voiceReacted(); }, false},
        {"it is being worked on", [this] { turn.backendStarted(); }, false},
        {"the line is lost", [this] { disconnect(); }, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        turn.end();
        connect();
        listening.begin();
        listening.wordsCame("buy milk");
        row.happens();
        scheduler.advance(14s);
        EXPECT_TRUE(heard.empty());
        scheduler.advance(2s);
        EXPECT_EQ(heard.size(), row.isMissed ? 1U : 0U);
        heard.clear();
        turn.backendFinished();
        listening.end();
    }
}

TEST_F(ListeningTest, silencesTheDeviceAndTheVoiceThatIsSpokenOver)
{
    connect();
    silence(1s);
    notices.say("Something went wrong.");
    turn.voiceSound(Bytes(96'000));
    sound(80ms, 12000);
    EXPECT_FALSE(notices.isSpeaking());
    EXPECT_EQ(player.unplayed(), 0ms);
    EXPECT_EQ(sentSince(), Lines{"drop stale"});
    EXPECT_TRUE(turn.bargedIn());
    silence(1s);
    scheduler.advance(Listening::bargeInNotice);
    EXPECT_FALSE(turn.bargedIn()) << "the service took it for noise";
}

TEST_F(ListeningTest, endsASentenceThatIsCutByTheMuteSwitch)
{
    connect();
    silence(1s);
    sound(400ms, 12000);
    listening.ear().setMuted(Ear::Muting::muted);
    ASSERT_EQ(heard.size(), 1U);
    const int before = wire->audioChunks;
    listening.speechCut(std::get<listening_report::SpeechCut>(heard.front()).ending);
    EXPECT_EQ(wire->audioChunks, before + Ear::quietChunks);
    EXPECT_EQ(sentSince().back(), "pause");
}

} // namespace
} // namespace quorvell
