// SPDX-License-Identifier: MIT
// Catches a turn from a recording that ends early, hangs, or loses its reply.
#include "Quorvell/app/talk/TalkTurn.h"

#include "FakeLiveConnection.h"
#include "Quorvell/app/talk/ReplyRecorder.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quorvell {
namespace {

using namespace std::chrono_literals;

class TalkTurnTest : public testing::Test {
protected:
    /// A second of a tone that swells like a syllable, loud or hardly audible; and silence behind it.
    void begin(double loudness = 12000, std::chrono::seconds silence = 0s)
    {
        constexpr std::size_t second = 24000;
        std::vector<std::int16_t> recording(second * static_cast<std::size_t>(1 + silence.count()));
        for (std::size_t index = 0; index < second; ++index)
            recording[index] = static_cast<std::int16_t>(loudness * std::sin(static_cast<double>(index) / 10));
        turn.emplace(TalkTurn::Ports{scheduler, [this] { inputEndedAt = scheduler.now(); },
                         [this](const TalkTurn::Outcome& ended) { outcome = ended; }},
            recording);
        const auto connections = [this](LiveConnectionObserver& session, LiveMedium) {
            auto made = std::make_unique<FakeLiveConnection>(session);
            wire = made.get();
            return made;
        };
        SessionSettings settings;
        settings.limits = TalkTurn::limitsFor(recording.size());
        controller.emplace(
            SessionController::Ports{scheduler, connections, recorder, log, *turn, tools, nullptr}, settings);
        turn->begin(*controller);
        wire->report(live_event::SetupComplete{"sess_1"});
    }
    void answerAloud()
    {
        wire->report(live_event::InputTranscript{"remind me"});
        wire->report(live_event::OutputTranscript{"When?"});
        wire->report(live_event::Audio{Bytes{1, 0, 2, 0}});
        scheduler.advance(800ms);
    }
    TalkTurn::Outcome closeAndTell()
    {
        EXPECT_EQ(wire->sent.back(), "close");
        wire->closeWith({});
        return outcome.value_or(TalkTurn::Outcome{false, "not finished"});
    }

    VirtualScheduler scheduler;
    int voiceBegan = 0;
    ReplyRecorder recorder{[this] { ++voiceBegan; }};
    WrittenLog log;
    ToolRegistry registry;
    ToolDispatcher tools{registry};
    FakeLiveConnection* wire = nullptr;
    std::optional<SessionTime> inputEndedAt;
    std::optional<TalkTurn::Outcome> outcome;
    std::optional<TalkTurn> turn;
    std::optional<SessionController> controller;
};

TEST_F(TalkTurnTest, theRecordingIsPlayedAtThePaceOfSpeechAndItsReplyKept)
{
    begin();
    scheduler.advance(700ms);
    const int chunksSoFar = wire->audioChunks;
    EXPECT_GT(chunksSoFar, 5);
    EXPECT_LE(chunksSoFar, 18); // 700 ms are 17.5 chunks.
    scheduler.advance(1300ms);
    ASSERT_TRUE(inputEndedAt);
    EXPECT_NEAR(static_cast<double>(inputEndedAt->count()), 1480, 45); // Lead-in and recording.
    EXPECT_EQ(std::count(wire->sent.begin(), wire->sent.end(), "pause"), 0);
    scheduler.advance(500ms); // The silence that follows closes the gate.
    EXPECT_EQ(std::count(wire->sent.begin(), wire->sent.end(), "pause"), 1);
    answerAloud();
    EXPECT_EQ(closeAndTell().problem, "");
    EXPECT_TRUE(outcome->isAnswered);
    EXPECT_EQ(recorder.samples(), (std::vector<std::int16_t>{1, 2}));
    EXPECT_EQ(voiceBegan, 1);
}

TEST_F(TalkTurnTest, anEarlyAnswerLeavesTimeForMoreWords)
{
    begin();
    scheduler.advance(300ms);
    answerAloud();
    scheduler.advance(3300ms);
    EXPECT_NE(wire->sent.back(), "close");
    scheduler.advance(200ms);
    EXPECT_EQ(closeAndTell().problem, "");
}

TEST_F(TalkTurnTest, theRecordingIsPlayedWholeOrTheRestIsTold)
{
    begin(12000, 300s);
    answerAloud();
    scheduler.advance(290s);
    EXPECT_FALSE(outcome) << "the pauses of a recording are not the user's silence";
    scheduler.advance(20s);
    EXPECT_EQ(closeAndTell().problem, "");
    outcome.reset();
    begin(12000, 300s);
    answerAloud();
    scheduler.advance(60s);
    controller->stop("daily limit reached");
    EXPECT_EQ(closeAndTell().problem.substr(0, 40), "The conversation ended after 1:00 of 5:0");
    EXPECT_FALSE(outcome->isAnswered);
}

TEST_F(TalkTurnTest, whatCannotBeAnsweredIsToldInASentence)
{
    struct Row {
        const char* name;
        double loudness;
        std::function<void()> happens;
        const char* problem;
    };
    const Row rows[] = {
        {"hardly audible", 100, [this] { scheduler.advance(25s); }, "No speech was heard"},
        {"not understood", 12000, [this] { scheduler.advance(25s); }, "Nothing was understood"},
        {"the voice says so itself", 12000,
            [this] {
                scheduler.advance(2s);
                wire->report(live_event::OutputTranscript{"I did not catch that."});
                scheduler.advance(1s);
            },
            "Nothing was understood"},
        {"understood, never answered", 12000,
            [this] {
                scheduler.advance(2s);
                wire->report(live_event::InputTranscript{"remind me"});
                scheduler.advance(2min); // The session asks once more by itself.
            },
            "No answer came"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        begin(row.loudness);
        row.happens();
        EXPECT_NE(closeAndTell().problem.find(row.problem), std::string::npos) << outcome->problem;
        EXPECT_FALSE(outcome->isAnswered);
    }
}

TEST_F(TalkTurnTest, aLostConnectionEndsItAndIsToldByTheSession)
{
    begin();
    scheduler.advance(300ms);
    wire->closeWith({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
    ASSERT_TRUE(outcome);
    EXPECT_FALSE(outcome->isAnswered);
    EXPECT_EQ(outcome->problem, "");
    scheduler.advance(30s);
    EXPECT_EQ(scheduler.pendingTimers(), 0U);
}

} // namespace
} // namespace quorvell
