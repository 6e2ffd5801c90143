// SPDX-License-Identifier: MIT
#include "Quorvell/session/listening/Listening.h"

#include "SessionParts.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

struct ListeningTest : SessionParts, testing::Test {
    ListeningTest() { listening.begin(); }
    void sound(std::chrono::milliseconds length, int loudness)
    {
        Bytes chunk(MicrophoneStream::chunkBytes);
        for (std::size_t index = 1; index < chunk.size(); index += 4)
            chunk[index] = static_cast<std::uint8_t>(loudness);
        for (; length > 0ms; length -= MicrophoneStream::chunkLength) {
            listening.captured(chunk);
            scheduler.advance(MicrophoneStream::chunkLength);
        }
    }
    void speak()
    {
        sound(1s, 0);
        sound(520ms, 40);
        sound(1s, 0);
    }
    template <typename Report> bool hasReported()
    {
        const auto reports = std::exchange(heard, {});
        return std::ranges::any_of(reports, [](const auto& report) { return std::holds_alternative<Report>(report); });
    }
};

TEST_F(ListeningTest, givesWhatNobodyReactedToOnceToEachLine)
{
    enum class Reaction { none, act, voice, voiceAfterWords, giveUp };
    struct Row {
        const char* name;
        Reaction reaction;
        bool isGivenAgain;
    };
    const Row rows[] = {
        {"nothing came back", Reaction::none, true},
        {"a tool was called", Reaction::act, false},
        {"a voice, perhaps about something else", Reaction::voice, true},
        {"words, then a voice", Reaction::voiceAfterWords, false},
        {"the user was told to say it again", Reaction::giveUp, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        listening.begin();
        turn.end();
        speak();
        connect();
        listening.flushHeldChunks();
        const int chunks = wire->audioChunks;
        EXPECT_EQ(chunks, 41);
        listening.flushHeldChunks();
        EXPECT_EQ(wire->audioChunks, chunks);
        EXPECT_TRUE(listening.areWordsAwaited());
        if (row.reaction == Reaction::act)
            listening.modelActed();
        if (row.reaction == Reaction::voiceAfterWords)
            listening.wordsCame("buy milk");
        if (row.reaction == Reaction::voice || row.reaction == Reaction::voiceAfterWords)
            listening.voiceReacted();
        if (row.reaction == Reaction::giveUp)
            listening.giveUp();
        disconnect();
        listening.lineLost();
        connect();
        listening.flushHeldChunks();
        EXPECT_EQ(wire->audioChunks, row.isGivenAgain ? chunks : 0);
        EXPECT_EQ(synthesiser.said, "");
        disconnect();
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
    enum class Then { nothing, act, voice, work };
    struct Row {
        const char* name;
        Then then;
        bool isMissed;
    };
    for (const Row& row : {Row{"nothing happens", Then::nothing, true}, {"a tool is called", Then::act, false},
             {"it is answered", Then::voice, false}, {"it is being worked on", Then::work, false}}) {
        SCOPED_TRACE(row.name);
        turn.end();
        connect();
        listening.begin();
        listening.wordsCame("buy milk");
        if (row.then == Then::act) {
            turn.backendStarted();
            listening.modelActed();
            turn.acted(ConversationTurn::Act::onLatest);
        }
        if (row.then == Then::voice) {
            listening.voiceReacted();
            turn.voiceWords("Milk is noted.");
        }
        if (row.then == Then::work)
            turn.backendStarted();
        scheduler.advance(14s);
        EXPECT_FALSE(hasReported<listening_report::RequestMissed>());
        scheduler.advance(2s);
        EXPECT_EQ(hasReported<listening_report::RequestMissed>(), row.isMissed);
        turn.backendFinished();
        listening.end();
    }
}

TEST_F(ListeningTest, silencesTheDeviceAndTheVoiceThatIsSpokenOver)
{
    connect();
    sound(1s, 0);
    notices.say("Something went wrong.");
    turn.voiceSound(Bytes(96'000));
    sound(80ms, 40);
    EXPECT_FALSE(notices.isSpeaking());
    EXPECT_EQ(player.unplayed(), 0ms);
    EXPECT_EQ(sentSince(), Lines{"drop stale"});
    EXPECT_TRUE(turn.bargedIn());
    sound(1s, 0);
    scheduler.advance(Listening::bargeInNotice);
    EXPECT_FALSE(turn.bargedIn()) << "the service took it for noise";
}

TEST_F(ListeningTest, endsASentenceThatIsCutByTheMuteSwitch)
{
    connect();
    sound(1s, 0);
    sound(400ms, 40);
    listening.ear().setMuted(Ear::Muting::muted);
    ASSERT_EQ(heard.size(), 1U);
    const int before = wire->audioChunks;
    listening.speechCut(std::get<listening_report::SpeechCut>(heard.front()).ending);
    EXPECT_EQ(wire->audioChunks, before + Ear::quietChunks);
    EXPECT_EQ(sentSince().back(), "pause");
}

} // namespace
} // namespace quorvell
