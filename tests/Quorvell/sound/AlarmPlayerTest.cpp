// SPDX-License-Identifier: MIT
// Catches an alarm that clicks, does not grow louder, goes on when it was stopped, or fails in silence.
#include "Quorvell/sound/AlarmPlayer.h"

#include "Quorvell/sound/AlarmTone.h"
#include "SoundRig.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvell::test {
namespace {

using namespace std::chrono_literals;

TEST(AlarmTone, growsLouderAndNeverClicks)
{
    AlarmTone tone;
    std::vector<std::int16_t> samples(AlarmTone::riseSamples + 2 * AlarmTone::roundSamples);
    tone.render(samples);
    const auto peak = [&](std::size_t start) {
        int highest = 0;
        for (std::size_t index = start; index < start + AlarmTone::roundSamples; ++index)
            highest = std::max(highest, std::abs(static_cast<int>(samples[index])));
        return highest;
    };
    int before = 0;
    for (std::size_t second = 0; second < 60; second += 10) {
        const int now = peak(second * AlarmTone::sampleRateHz);
        EXPECT_GT(now, before * 5 / 4) << second;
        before = now;
    }
    EXPECT_NEAR(peak(0), 3280, 100);
    EXPECT_NEAR(peak(AlarmTone::riseSamples), 29490, 10); // Nothing is clipped.
    constexpr std::size_t note = AlarmTone::sampleRateHz / 8;
    for (std::size_t edge = 0; edge < AlarmTone::roundSamples; edge += note) // Between notes it is silent.
        EXPECT_LT(std::abs(static_cast<int>(samples[edge])), 10) << edge;
    const std::size_t rest = AlarmTone::roundSamples - AlarmTone::sampleRateHz / 2;
    EXPECT_TRUE(std::all_of(samples.begin() + rest, samples.begin() + AlarmTone::roundSamples,
        [](std::int16_t sample) { return sample == 0; }));
    std::vector<std::int16_t> again(100);
    tone.restart();
    tone.render(again);
    EXPECT_TRUE(std::equal(again.begin(), again.end(), samples.begin()));
}

class EachAlarmServer : public testing::TestWithParam<PrivatePulse::Server> { };

TEST_P(EachAlarmServer, soundsBesideTheVoiceUntilItIsStopped)
{
    constexpr float audible = 0.004F;
    SoundRig rig({"module-null-sink sink_name=speaker rate=48000"}, GetParam());
    int failures = 0;
    AlarmPlayer alarm(rig.server, &rig.playedHere, {[&] { ++failures; }, [&] { return rig.player.isPlaying(); }});
    rig.capture.chooseDevice("speaker.monitor");
    rig.capture.open();
    ASSERT_TRUE(rig.waitFor([&] { return rig.levels.size() > 5; }));
    const auto isHeard = [&] {
        return std::any_of(rig.levels.begin(), rig.levels.end(), [&](float level) { return level > audible; });
    };
    for (int round = 1; round <= 2; ++round) { // It can ring again.
        rig.levels.clear();
        const auto start = rig.scheduler.now();
        alarm.start();
        ASSERT_TRUE(rig.waitFor(isHeard));
        EXPECT_LT(rig.scheduler.now() - start, 1s);
        alarm.start(); // It rings already.
        rig.player.play(bursts(500, 300ms));
        ASSERT_TRUE(rig.waitFor([&] { return rig.player.unplayed() == 0ms; }));
        alarm.stop();
        rig.scheduler.run(100ms); // What is still on its way through the microphone.
        rig.levels.clear();
        rig.scheduler.run(1s); // Longer than the rest between two rounds.
        EXPECT_FALSE(isHeard());
    }
    EXPECT_EQ(failures, 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, EachAlarmServer, testing::Values(PrivatePulse::Server::pulseAudio, PrivatePulse::Server::pipeWire));

TEST(AlarmPlayer, saysThatNothingIsHeard)
{
    const TemporaryFolder folder;
    RealScheduler scheduler;
    SoundServer server({"unix:" + (folder / "nobody"), folder.path(), "Test"}, scheduler);
    int failures = 0;
    AlarmPlayer alarm(server, nullptr, {[&] { ++failures; }});
    alarm.start();
    EXPECT_TRUE(scheduler.runUntil([&] { return failures > 0; }));
    alarm.stop();
}

} // namespace
} // namespace quorvell::test
