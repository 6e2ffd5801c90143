// SPDX-License-Identifier: MIT
// Catches sound that stops when devices or the server come and go, or is not cut at once.
#include "Quorvell/sound/AlarmPlayer.h"
#include "SoundRig.h"
#include "TemporaryFolder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <pulse/stream.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <new>

namespace {

/// While sound passes through one of our callbacks, on its thread.
thread_local bool isSoundPassing = false;
std::atomic<int> callbackAllocations{0};
std::atomic<int> chainThreadAllocations{0};

void countAllocation()
{
    char name[16] = "";
    pthread_getname_np(pthread_self(), name, sizeof name);
    callbackAllocations += isSoundPassing ? 1 : 0;
    chainThreadAllocations += std::strcmp(name, "microphone") == 0 ? 1 : 0;
}

/// Stands between the library and a callback of ours.
struct WatchedCallback {
    std::atomic<pa_stream_request_cb_t> ours{nullptr};
    std::atomic<int> runs{0};

    void run(pa_stream* stream, std::size_t bytes, void* self)
    {
        ++runs;
        isSoundPassing = true;
        ours.load()(stream, bytes, self);
        isSoundPassing = false;
    }
    void set(const char* setter, pa_stream* stream, pa_stream_request_cb_t callback, pa_stream_request_cb_t watched,
        void* self)
    {
        using Setter = void (*)(pa_stream*, pa_stream_request_cb_t, void*);
        if (callback)
            ours = callback;
        reinterpret_cast<Setter>(dlsym(RTLD_NEXT, setter))(stream, callback ? watched : nullptr, self);
    }
};
WatchedCallback reading;
WatchedCallback writing;

} // namespace

extern "C" void pa_stream_set_read_callback(pa_stream* stream, pa_stream_request_cb_t callback, void* self)
{
    const auto watched = [](pa_stream* its, std::size_t bytes, void* owner) { reading.run(its, bytes, owner); };
    reading.set("pa_stream_set_read_callback", stream, callback, watched, self);
}
extern "C" void pa_stream_set_write_callback(pa_stream* stream, pa_stream_request_cb_t callback, void* self)
{
    const auto watched = [](pa_stream* its, std::size_t bytes, void* owner) { writing.run(its, bytes, owner); };
    writing.set("pa_stream_set_write_callback", stream, callback, watched, self);
}

void* operator new(std::size_t size)
{
    countAllocation();
    if (void* memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace quorvell::test {
namespace {

using namespace std::chrono_literals;

const std::string speaker = "module-null-sink sink_name=speaker rate=48000 channels=2 norewinds=1";
const std::string otherSpeaker = "module-null-sink sink_name=other rate=44100 channels=2 norewinds=1";
const std::string microphone = "module-null-source source_name=microphone rate=48000 max_latency_msec=20";
const std::string otherMicrophone = "module-null-source source_name=other_microphone rate=44100 max_latency_msec=20";

/// Each attempt would be one more line of the library's on the terminal.
TEST(SoundServer, givesUpAtOnceWhereItsFolderCannotBeMade)
{
    const TemporaryFolder folder;
    const std::string file = folder / "file";
    std::ofstream(file) << "no folder";
    const char* const before = std::getenv("XDG_RUNTIME_DIR");
    const std::string kept = before ? before : "";
    setenv("XDG_RUNTIME_DIR", file.c_str(), 1);
    RealScheduler scheduler;
    const SoundServer server({{}, file, "Test"}, scheduler);
    EXPECT_TRUE(scheduler.runUntil([&] { return server.problem() != SoundProblem::none; }));
    EXPECT_EQ(server.problem(), SoundProblem::noFolder);
    testing::internal::CaptureStderr();
    scheduler.run(SoundServer::retryDelays[0] + SoundServer::retryDelays[1] + 100ms);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    before ? setenv("XDG_RUNTIME_DIR", kept.c_str(), 1) : unsetenv("XDG_RUNTIME_DIR");
}

class EachSoundServer : public testing::TestWithParam<PrivatePulse::Server> { };

TEST_P(EachSoundServer, countsWhatIsHeardAndFallsSilentAtOnce)
{
    SoundRig rig({speaker}, GetParam());
    rig.capture.chooseDevice("speaker.monitor");
    rig.capture.open();
    ASSERT_TRUE(rig.waitFor([&] { return rig.levels.size() > 5; }));
    EXPECT_EQ(rig.loudChunks(), 0);
    EXPECT_TRUE(rig.microphoneReports.empty());

    // A short reply, heard to its end, in pieces that come faster than they are heard
    const Bytes reply = bursts(500, 600ms);
    for (std::size_t start = 0; start < reply.size(); start += 3000)
        rig.player.play(std::span(reply).subspan(start, std::min<std::size_t>(3000, reply.size() - start)));
    EXPECT_GT(rig.player.unplayed(), 500ms);
    auto last = 0ms;
    const auto start = rig.scheduler.now();
    ASSERT_TRUE(rig.waitFor([&] {
        EXPECT_GE(rig.player.played(), last);
        last = rig.player.played();
        return rig.player.unplayed() == 0ms;
    }));
    EXPECT_EQ(rig.player.played(), 600ms);
    EXPECT_GE(rig.scheduler.now() - start, 590ms);
    EXPECT_LT(rig.scheduler.now() - start, 900ms);
    rig.scheduler.run(100ms);
    EXPECT_NEAR(rig.loudChunks(), 9, 3); // three bursts of 100 ms

    // A long one, broken off: what is claimed as heard is what sounded, and nothing follows
    for (int round = 1; round <= 2; ++round) {
        rig.player.play(bursts(500, 60s));
        ASSERT_TRUE(rig.waitFor([&] { return rig.player.played() > 600ms + round * 500ms; }));
        rig.player.stop();
        const auto played = rig.player.played();
        EXPECT_EQ(rig.player.unplayed(), 0ms);
        rig.scheduler.run(120ms); // what is still on its way through the microphone
        rig.levels.clear();
        rig.scheduler.run(300ms);
        EXPECT_EQ(rig.loudChunks(), 0);
        EXPECT_EQ(rig.player.played(), played);
        EXPECT_LT(played, 600ms + round * 600ms);
    }
    rig.player.play(bursts(500, 200ms));
    ASSERT_TRUE(rig.waitFor([&] { return rig.player.unplayed() == 0ms; }));
    EXPECT_TRUE(rig.playerReports.empty());
}

/// From the first sample on, while streams begin, are flushed, and move to other devices.
TEST_P(EachSoundServer, allocatesNothingWhereSoundPasses)
{
    callbackAllocations = 0;
    SoundRig rig({speaker, otherSpeaker, otherMicrophone}, GetParam());
    const std::string plugged = rig.pulse.load(microphone);
    rig.pulse.control("set-default-source microphone");
    rig.pulse.control("set-default-sink speaker");
    rig.capture.open();
    AlarmPlayer alarm(rig.server, &rig.playedHere, {[] {}, [&] { return rig.player.isPlaying(); }});
    alarm.start();
    rig.player.play(bursts(500, 5s));
    ASSERT_TRUE(rig.waitFor([&] { return rig.capture.device() == "microphone" && rig.player.played() > 300ms; }));
    rig.player.stop();
    rig.player.play(bursts(500, 5s));
    rig.pulse.unload(plugged);
    rig.pulse.control("set-default-sink other");
    ASSERT_TRUE(
        rig.waitFor([&] { return rig.capture.device() == "other_microphone" && rig.player.device() == "other"; }));
    const auto played = rig.player.played();
    rig.levels.clear();
    reading.runs = 0;
    writing.runs = 0;
    chainThreadAllocations = 0;
    ASSERT_TRUE(rig.waitFor([&] { return rig.levels.size() > 10 && rig.player.played() > played + 300ms; }));
    EXPECT_EQ(callbackAllocations, 0);
    EXPECT_GT(reading.runs, 10);
    EXPECT_GT(writing.runs, 10);
    EXPECT_GT(chainThreadAllocations, 10) << "the counter does not count";
}

TEST_P(EachSoundServer, followsDevicesThatComeAndGo)
{
    SoundRig rig({speaker}, GetParam());
    const std::string plugged = rig.pulse.load(microphone);
    ASSERT_TRUE(rig.waitFor([&] { return rig.server.isReady() && rig.server.devices().microphones.size() == 2; }));
    rig.capture.open();
    ASSERT_TRUE(rig.waitFor([&] { return rig.capture.device() == "microphone" && rig.levels.size() > 5; }));

    // The only microphone is pulled out: the loudspeaker's monitor is none
    rig.pulse.unload(plugged);
    ASSERT_TRUE(rig.waitFor([&] { return !rig.microphoneReports.empty(); }));
    EXPECT_NE(rig.microphoneReports.back().find("no microphone"), std::string::npos);
    EXPECT_EQ(rig.capture.device(), "");
    rig.levels.clear();
    rig.pulse.load(otherMicrophone);
    ASSERT_TRUE(rig.waitFor([&] { return rig.levels.size() > 2; }));
    EXPECT_EQ(rig.capture.device(), "other_microphone");
    EXPECT_EQ(rig.microphoneReports.back(), "recovered");

    // A chosen one that comes later is taken when it comes, and let go for the default when it goes
    rig.capture.chooseDevice("microphone");
    EXPECT_EQ(rig.capture.device(), "other_microphone");
    const std::string again = rig.pulse.load(microphone);
    ASSERT_TRUE(rig.waitFor([&] { return rig.capture.device() == "microphone"; }));
    rig.pulse.unload(again);
    ASSERT_TRUE(rig.waitFor([&] { return rig.capture.device() == "other_microphone"; }));

    // Mute lets the device go
    rig.capture.close();
    EXPECT_TRUE(rig.waitFor([&] { return rig.pulse.control("list short source-outputs").empty(); }));
    rig.levels.clear();
    rig.scheduler.run(100ms);
    EXPECT_TRUE(rig.levels.empty());

    // The loudspeaker follows the default and outlives its own
    const std::string other = rig.pulse.load(otherSpeaker);
    rig.player.play(bursts(500, 10s));
    ASSERT_TRUE(rig.waitFor([&] { return rig.player.played() > 100ms; }));
    EXPECT_EQ(rig.player.device(), "speaker");
    rig.pulse.control("set-default-sink other");
    ASSERT_TRUE(rig.waitFor([&] { return rig.player.device() == "other"; }));
    const auto goesOn = [&] {
        return rig.waitFor([&, before = rig.player.played()] { return rig.player.played() > before + 200ms; });
    };
    ASSERT_TRUE(goesOn());
    rig.pulse.unload(other);
    ASSERT_TRUE(rig.waitFor([&] { return rig.player.device() == "speaker"; }));
    EXPECT_TRUE(goesOn());
    EXPECT_TRUE(rig.playerReports.empty());
}

TEST(PulseSound, goesOnWhenTheServerWasRestarted)
{
    SoundRig rig({speaker, microphone});
    rig.capture.open();
    rig.player.play(bursts(500, 4s));
    ASSERT_TRUE(rig.waitFor([&] { return rig.levels.size() > 5 && rig.player.played() > 200ms; }));
    rig.pulse.stop(SIGKILL);
    ASSERT_TRUE(rig.waitFor([&] { return !rig.server.isReady(); }));
    const auto heard = rig.player.played();
    EXPECT_LT(heard, 1s);
    rig.pulse.start();
    rig.levels.clear();
    ASSERT_TRUE(rig.waitFor([&] { return rig.levels.size() > 5 && rig.player.played() > heard + 200ms; }));
    EXPECT_TRUE(rig.microphoneReports.empty()) << "a restart is no reason to talk to the user";
    EXPECT_TRUE(rig.playerReports.empty());
    rig.player.stop();
}

TEST(PulseSound, saysWhatIsMissingAndNoticesWhenItComes)
{
    SoundRig rig({speaker, microphone});
    ASSERT_TRUE(rig.waitFor([&] { return rig.server.isReady(); }));
    rig.pulse.stop(SIGTERM);
    rig.capture.open();
    rig.player.play(bursts(500, 60s));
    ASSERT_TRUE(
        rig.scheduler.runUntil([&] { return !rig.microphoneReports.empty() && rig.player.unplayed() == 0ms; }, 8s))
        << "what nobody can hear is not waited for";
    ASSERT_EQ(rig.playerReports.size(), 1U);
    for (const std::string& sentence : {rig.microphoneReports.back(), rig.playerReports.back()})
        EXPECT_NE(sentence.find("no sound server is running"), std::string::npos) << sentence;
    rig.player.play(bursts(500, 1s));
    EXPECT_EQ(rig.player.unplayed(), 0ms);

    // Nothing asks again by itself; the server's socket tells
    rig.pulse.start();
    ASSERT_TRUE(rig.waitFor([&] { return rig.levels.size() > 2; }));
    EXPECT_EQ(rig.microphoneReports.back(), "recovered");
    ASSERT_TRUE(rig.waitFor([&] { return rig.playerReports.back() == "recovered"; }));
    rig.player.play(bursts(500, 200ms));
    EXPECT_GT(rig.player.unplayed(), 100ms);
    EXPECT_TRUE(rig.waitFor([&] { return rig.player.unplayed() == 0ms; }));
}

INSTANTIATE_TEST_SUITE_P(Servers, EachSoundServer,
    testing::Values(PrivatePulse::Server::pulseAudio, PrivatePulse::Server::pipeWire),
    [](const auto& server) { return server.param == PrivatePulse::Server::pipeWire ? "PipeWire" : "PulseAudio"; });

} // namespace
} // namespace quorvell::test
