// SPDX-License-Identifier: MIT
// Catches calls that lose texts or sound, miss the other side's end, or leave something behind.
#include "Media/webrtc/WebRTCPeer.h"

#include "Media/audio/SampleBytes.h"
#include "Media/webrtc/CallAudio.h"
#include "PostQueue.h"
#include "Tone.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <optional>
#include <thread>
#include <tuple>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using State = WebRTCPeer::State;
using Role = WebRTCPeerOptions::Role;
using Backlog = WebRTCPeerOptions::Backlog;
using Pcm = std::vector<std::uint8_t>;

/// In use, whatever the allocator keeps for later.
std::ptrdiff_t bytesInUse()
{
    const auto memory = mallinfo2();
    return static_cast<std::ptrdiff_t>(memory.uordblks + memory.hblkhd);
}

/// One peer and what it reported.
struct End {
    End(test::PostQueue& queue, Role role, Backlog backlog = Backlog::kept)
    {
        WebRTCPeer::Reports reports;
        reports.descriptionReady = [this](const std::string& sdp) { description = sdp; };
        reports.stateChanged = [this](State changed) { state = changed; };
        reports.channelOpened = [this] { isOpen = true; };
        reports.textReceived = [this](const std::string& text) { texts.push_back(text); };
        reports.soundReceived = [this](const Pcm& pcm) { heard.insert(heard.end(), pcm.begin(), pcm.end()); };
        reports.failed = [this](const std::string& problem) { problems.push_back(problem); };
        peer = std::make_unique<WebRTCPeer>(WebRTCPeerOptions{role, WebRTCPeerOptions::Reach::thisComputer, backlog},
            std::move(reports), queue.poster());
    }

    std::optional<std::string> description;
    std::optional<State> state;
    bool isOpen = false;
    std::vector<std::string> texts;
    Pcm heard;
    std::vector<std::string> problems;
    std::unique_ptr<WebRTCPeer> peer;
};

struct Call {
    Call()
        : caller(queue, Role::offers, Backlog::caughtUp)
        , answerer(queue, Role::answers)
    {
        EXPECT_TRUE(queue.runUntil([&] { return caller.description.has_value(); }));
        answerer.peer->takeDescription(*caller.description);
        EXPECT_TRUE(queue.runUntil([&] { return answerer.description.has_value(); }));
        caller.peer->takeDescription(*answerer.description);
        EXPECT_TRUE(queue.runUntil([&] { return caller.isOpen && answerer.isOpen; }));
    }

    test::PostQueue queue;
    End caller;
    End answerer;
};

TEST(WebRTCPeer, carriesTextsAndSoundBothWays)
{
    Call call;
    EXPECT_EQ(call.caller.state, State::connected);
    EXPECT_NE(call.answerer.description->find("opus/48000"), std::string::npos);

    const std::string long_(WebRTCPeer::largestText, 'x');
    EXPECT_FALSE(call.caller.peer->sendText(long_ + "x"));
    EXPECT_TRUE(call.caller.peer->sendText(long_));
    EXPECT_TRUE(call.caller.peer->sendText("Grüße"));
    EXPECT_TRUE(call.answerer.peer->sendText("{}"));
    ASSERT_TRUE(call.queue.runUntil([&] { return call.answerer.texts.size() == 2 && call.caller.texts.size() == 1; }));
    EXPECT_TRUE(call.answerer.texts[0] == long_);
    EXPECT_EQ(call.answerer.texts[1], "Grüße");

    EXPECT_TRUE(call.caller.peer->sendSound(tone(440, 700ms)));
    EXPECT_TRUE(call.answerer.peer->sendSound(tone(1000, 700ms)));
    const std::size_t enough = 2 * WebRTCPeer::sampleRate * 6 / 10;
    ASSERT_TRUE(call.queue.runUntil(
        [&] { return call.answerer.heard.size() >= enough && call.caller.heard.size() >= enough; }));
    EXPECT_NEAR(pitchOf(call.answerer.heard), 440, 15);
    EXPECT_NEAR(pitchOf(call.caller.heard), 1000, 30);

    EXPECT_TRUE(call.answerer.peer->sendSound(tone(1000, 4000ms)));
    EXPECT_FALSE(call.answerer.peer->sendSound(tone(1000, 4000ms))) << "the queue is bounded";
    EXPECT_GT(call.answerer.peer->unsentSound(), 4s);
    call.answerer.peer->dropSound();
    EXPECT_LT(call.answerer.peer->unsentSound(), 20ms);

    call.answerer.peer.reset();
    ASSERT_TRUE(call.queue.runUntil([&] { return call.caller.state == State::closed; }));
    EXPECT_FALSE(call.caller.peer->sendText("late"));
    EXPECT_TRUE(call.caller.problems.empty());
}

TEST(WebRTCPeer, noticesThatTheOtherSideHasVanished)
{
    Call call;
    call.answerer.peer->stall();
    EXPECT_TRUE(call.queue.runUntil([&] { return call.caller.state == State::disconnected; }));
}

TEST(WebRTCPeer, refusesADescriptionItCannotUse)
{
    test::PostQueue queue;
    End caller(queue, Role::offers);
    ASSERT_TRUE(queue.runUntil([&] { return caller.description.has_value(); }));
    std::string silent = *caller.description;
    for (std::size_t place; (place = silent.find("opus")) != std::string::npos;)
        silent.replace(place, 4, "none");
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {"no description", "hello", "cannot be read"},
        {"too long", *caller.description + std::string(WebRTCPeer::largestDescription, ' '), "cannot be read"},
        {"cut off", caller.description->substr(0, 700), "cannot be read"},
        {"without Opus", silent, "Opus"},
    };
    for (const auto& [name, sdp, problem] : rows) {
        SCOPED_TRACE(name);
        End answerer(queue, Role::answers);
        answerer.peer->takeDescription(sdp);
        ASSERT_TRUE(queue.runUntil([&] { return !answerer.problems.empty(); }));
        EXPECT_NE(answerer.problems[0].find(problem), std::string::npos) << answerer.problems[0];
    }
}

TEST(WebRTCPeer, callsLeaveNothingBehind)
{
    constexpr int warm = 20; // Until then threads and pools of the library still find their size.
    constexpr std::ptrdiff_t most = 256 * 1024;
    std::ptrdiff_t whenWarm = 0;
    for (int calls = 1; calls <= 3 * warm; ++calls) {
        Call call;
        call.caller.peer->sendSound(tone(440, 40ms));
        if (calls == warm)
            whenWarm = bytesInUse();
    }
    const auto hasGrown = [&] { return bytesInUse() - whenWarm > most; };
    for (int waits = 0; waits < 200 && hasGrown(); ++waits)
        std::this_thread::sleep_for(50ms); // The library's threads are still putting the last call away.
    EXPECT_FALSE(hasGrown()) << bytesInUse() - whenWarm;
}

CallAudio::Frame frameOf(std::int16_t value)
{
    CallAudio::Frame frame;
    frame.fill(value);
    return frame;
}

TEST(CallAudio, catchesUpInPausesOnly)
{
    const struct Row {
        const char* name;
        Backlog backlog;
        std::vector<int> given; ///< Levels of frames.
        std::vector<int> sent;
    } rows[] = {
        {"nothing waits", Backlog::caughtUp, {}, {0, 0}},
        {"quiet ahead of speech is left out", Backlog::caughtUp, {0, 0, 0, 0, 0, 0, 900, 901, 902, 903},
            {0, 900, 901, 902, 903, 0}},
        {"so is the noise of a room", Backlog::caughtUp, {60, 80, 50, 90, 60, 70, 900, 901, 902, 903},
            {70, 900, 901, 902, 903, 0}},
        {"a voice without a pause is kept", Backlog::caughtUp, {900, 901, 902, 903, 904, 905, 906},
            {900, 901, 902, 903, 904, 905, 906}},
        {"a short pause is kept", Backlog::caughtUp, {900, 0, 0, 901}, {900, 0, 0, 901, 0}},
        {"a reply keeps its pauses", Backlog::kept, {0, 0, 0, 0, 0, 0, 900}, {0, 0, 0, 0, 0, 0, 900, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        WebRTCPeerOptions options;
        options.backlog = row.backlog;
        CallAudio audio(options, [](const Pcm&) {});
        for (const int level : row.given) {
            const auto frame = frameOf(static_cast<std::int16_t>(level));
            audio.send(bytesOfSamples(frame));
        }
        std::vector<int> sent;
        for (std::size_t index = 0; index < row.sent.size(); ++index) {
            CallAudio::Frame frame;
            audio.frameToSend(frame);
            sent.push_back(frame[0]);
        }
        EXPECT_EQ(sent, row.sent);
    }
}

void expectReportsBeyond(std::chrono::milliseconds quietReported)
{
    test::PostQueue queue;
    std::size_t frames = 0;
    WebRTCPeerOptions options;
    options.quietReported = quietReported;
    CallAudio audio(options, [post = queue.poster(), &frames](const Pcm& pcm) {
        post([&frames, count = pcm.size() / 2 / CallAudio::frameSamples] { frames += count; });
    });
    const auto hear = [&](int level, int count) {
        for (int index = 0; index < count; ++index)
            audio.frameHeard(frameOf(static_cast<std::int16_t>(level)));
    };
    hear(20, 50); // What Opus makes of silence
    hear(500, 5);
    hear(0, 20);
    hear(500, 5);
    hear(0, 90);
    const std::size_t expected = 5 + 20 + 5 + static_cast<std::size_t>(quietReported / CallAudio::frameLength);
    EXPECT_TRUE(queue.runUntil([&] { return frames >= expected; }));
    EXPECT_EQ(frames, expected);
}

TEST(CallAudio, reportsVoiceAndALittleBeyond)
{
    expectReportsBeyond(std::chrono::milliseconds(300));
    expectReportsBeyond(std::chrono::milliseconds(600));
}

} // namespace
} // namespace quorvell
