// SPDX-License-Identifier: MIT
// Catches words heard in noise, speech that goes on after its end, and models that are missing without a word.
#include "FakeDevices.h"
#include "Media/audio/Resampler.h"
#include "OnDeviceSpeech/SpeechVoice.h"
#include "Quorvell/speech/DeviceEar.h"
#include "Quorvell/speech/DeviceVoice.h"
#include "QuorvellCore/live/gate/PCM.h"
#include "RealScheduler.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <random>
#include <thread>

namespace quorvell::test {
namespace {

using namespace std::chrono_literals;

Bytes spoken(std::string_view text, std::string_view voice)
{
    std::vector<std::int16_t> samples;
    SpeechVoice(voice).speak(text,
        [&](std::span<const std::int16_t> piece) { samples.insert(samples.end(), piece.begin(), piece.end()); }, {});
    Resampler resampler(SpeechVoice::sampleRateHz, 24000);
    std::vector<float> converted = resampler.process(toFloat(samples));
    return PCM::floatToInt16LE(converted);
}

/// A second or more of a room with a fan, as loud as a level.
Bytes room(std::chrono::milliseconds length, float level)
{
    std::mt19937 chance(1);
    std::normal_distribution<float> sample(0, level / 4);
    std::vector<float> samples(static_cast<std::size_t>(length.count()) * 24);
    std::generate(samples.begin(), samples.end(), [&] { return sample(chance); });
    return PCM::floatToInt16LE(samples);
}

std::string programFolder()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

struct Heard {
    int onsets = 0;
    std::vector<std::string> words;
    std::vector<std::string> failures;
    DozeListener::Reports reports()
    {
        return {[this] { ++onsets; }, [this](const std::string& text) { words.push_back(text); },
            [this](const std::string& sentence) { failures.push_back(sentence); }};
    }
};

TEST(DeviceEar, hearsWordsAndLeavesNoiseAlone)
{
    RealScheduler scheduler;
    DeviceEar ear(SpeechModels::find(programFolder()), scheduler);
    Heard heard;
    ear.start(heard.reports());
    ear.captured(room(1s, 0.002F));
    ear.captured(spoken("Remind me tomorrow at five p m to call the dentist.", "rms"));
    EXPECT_EQ(heard.onsets, 0) << "never from inside a call";
    ear.captured(room(1s, 0.002F));
    ASSERT_TRUE(scheduler.runUntil([&] { return !heard.words.empty() || !heard.failures.empty(); }, 20s));
    ASSERT_TRUE(heard.failures.empty()) << heard.failures.front();
    ASSERT_FALSE(heard.words.empty());
    EXPECT_EQ(heard.onsets, 1);
    EXPECT_NE(heard.words.front().find("tomorrow at 5 pm"), std::string::npos) << heard.words.front();

    // A loud fan is learned within two seconds and then ignored; a click is no speech.
    heard = {};
    ear.start(heard.reports());
    ear.captured(room(4s, 0.05F));
    Bytes click = room(40ms, 0.5F);
    ear.captured(click);
    ear.captured(room(4s, 0.05F));
    scheduler.run(300ms);
    EXPECT_EQ(heard.onsets, 0);

    // After stop nothing is reported, also of what is being recognised.
    ear.captured(spoken("What is the weather in Paris today?", "slt"));
    ear.captured(room(1s, 0.002F));
    ear.stop();
    scheduler.run(500ms);
    EXPECT_EQ(heard.onsets, 0);
    EXPECT_TRUE(heard.words.empty());
    EXPECT_TRUE(heard.failures.empty());
}

TEST(DeviceEar, saysWhatIsMissing)
{
    RealScheduler scheduler;
    DeviceEar ear(SpeechModels::find("/nowhere"), scheduler);
    for (int attempt = 0; attempt < 2; ++attempt) {
        Heard heard;
        ear.start(heard.reports());
        ear.captured(spoken("Hello?", "slt"));
        ASSERT_TRUE(scheduler.runUntil([&] { return !heard.failures.empty(); }));
        EXPECT_NE(heard.failures.front().find("missing"), std::string::npos);
        ear.captured(room(1s, 0.2F));
        ear.stop();
    }
}

TEST(RecognitionWorker, endsWithoutDoingWhatWaits)
{
    std::atomic<int> reports = 0;
    for (const bool isLoading : {false, true}) {
        RecognitionWorker worker(SpeechModels::find(programFolder()),
            {[&](std::uint64_t, const std::string&) { ++reports; }, [&](const std::string&) { ++reports; }});
        for (std::uint64_t utterance = 1; utterance <= 3; ++utterance) {
            worker.begin(utterance);
            worker.feed(std::vector<std::int16_t>(std::size_t{10} * RecognitionWorker::sampleRateHz));
            worker.finish();
        }
        if (isLoading)
            std::this_thread::sleep_for(100ms);
    }
    EXPECT_EQ(reports, 0) << "neither words nor a failure of models that nobody waits for";
}

TEST(DeviceVoice, isSpeakingUntilItWasHeard)
{
    RealScheduler scheduler;
    VirtualScheduler loudspeaker; // Its time goes by when the test says so.
    FakePlayer player(loudspeaker);
    DeviceVoice voice(player, scheduler);
    EXPECT_FALSE(voice.isSpeaking());
    voice.say("I am still here.");
    voice.say("Call me when you need me.");
    EXPECT_TRUE(voice.isSpeaking());
    ASSERT_TRUE(scheduler.runUntil([&] { return player.unplayed() > 2s; }));
    scheduler.run(200ms);
    const auto length = player.unplayed();
    EXPECT_LT(length, 5s);
    EXPECT_TRUE(voice.isSpeaking()) << "made, but not heard";
    player.play(Bytes(48000)); // A second of somebody else's sound after it.
    loudspeaker.advance(length - 1ms);
    EXPECT_TRUE(voice.isSpeaking());
    loudspeaker.advance(1ms);
    EXPECT_FALSE(voice.isSpeaking());
    voice.stop();
    EXPECT_EQ(player.stops, 0) << "what others say is not cut off";
    loudspeaker.advance(1s);

    std::string story;
    while (story.size() < 2 * DeviceVoice::longestText)
        story += "And then they walked on. ";
    voice.say(story);
    voice.say("The end.");
    ASSERT_TRUE(scheduler.runUntil([&] { return player.unplayed() > 0ms; }));
    voice.stop();
    EXPECT_FALSE(voice.isSpeaking());
    EXPECT_EQ(player.stops, 1);
    scheduler.run(300ms);
    EXPECT_EQ(player.unplayed(), 0ms) << "nothing follows";
    voice.say("Back again.");
    EXPECT_TRUE(scheduler.runUntil([&] { return player.unplayed() > 500ms; }));
}

} // namespace
} // namespace quorvell::test
