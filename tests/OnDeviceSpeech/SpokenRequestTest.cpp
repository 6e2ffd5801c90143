// Real speech, made by the voice and heard by the recogniser.
#include "OnDeviceSpeech/SpeechRecogniser.h"
#include "OnDeviceSpeech/SpeechVoice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <thread>

namespace quorvell {

namespace {

using Samples = std::vector<std::int16_t>;

/// With the quiet that a microphone gate leaves around speech.
Samples spoken(const char* voice, const char* text)
{
    Samples samples(SpeechVoice::sampleRateHz / 4);
    SpeechVoice(voice).speak(text,
        [&](std::span<const std::int16_t> piece) { samples.insert(samples.end(), piece.begin(), piece.end()); }, {});
    samples.resize(samples.size() + SpeechVoice::sampleRateHz / 4);
    return samples;
}

std::unique_ptr<SpeechRecogniser> makeRecogniser()
{
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    auto made = SpeechRecogniser::create(SpeechModels::find(program.parent_path().string()));
    EXPECT_EQ(made.problem, "");
    return std::move(made.recogniser);
}

HeardUtterance hear(SpeechRecogniser& recogniser, const Samples& samples)
{
    constexpr std::size_t piece = SpeechRecogniser::sampleRateHz / 25;
    recogniser.begin();
    for (std::size_t start = 0; start < samples.size(); start += piece) {
        recogniser.feed(std::span(samples).subspan(start, std::min(piece, samples.size() - start)));
    }
    return recogniser.finish();
}

TEST(SpokenRequest, keepsDayAndHour)
{
    struct Row {
        const char* voice;
        const char* spoken;
        const char* time;
        const char* task;
    };
    const Row rows[] = {
        {"slt", "remind me tomorrow at 5 pm to call the dentist", "tomorrow at 5 pm", "call the dentist"},
        {"rms", "hey quorvell, remind me to water the garden on friday at half past three in the afternoon",
            "on friday at 3:30 in the afternoon", "water the garden"},
        {"slt", "don't let me forget to lock the door tonight at ten", "tonight at 10", "lock the door"},
        {"rms", "set a reminder for the twelfth of december at 9:30 am to pay the rent", "december 12th at 9:30 am",
            "pay the rent"},
        {"slt", "remind me in twenty five minutes to check the oven", "in 25 minutes", "check the oven"},
        {"rms", "remind me every monday at eight a.m. to feed the cat", "every monday at 8 am", "feed the cat"},
    };
    const auto recogniser = makeRecogniser();
    ASSERT_TRUE(recogniser);
    for (const Row& row : rows) {
        const HeardUtterance heard = hear(*recogniser, spoken(row.voice, row.spoken));
        SCOPED_TRACE(heard.text);
        EXPECT_TRUE(heard.isCommand);
        EXPECT_NE(heard.text.find(row.time), std::string::npos);
        EXPECT_NE(heard.text.find(row.task), std::string::npos);
        EXPECT_TRUE(std::is_sorted(heard.words.begin(), heard.words.end(),
            [](const HeardWord& left, const HeardWord& right) { return left.start < right.start; }));
    }
}

TEST(SpokenRequest, takesShortAnswersAndNotFreeSpeechForCommands)
{
    struct Row {
        const char* spoken;
        const char* text;
        bool isCommand;
    };
    const Row rows[] = {
        {"the afternoon", "the afternoon", true},
        {"never mind", "never mind", true},
        {"at nine in the morning", "at 9 in the morning", true},
        {"what is the capital of france", "what is the capital of france", false},
        {"i am not sure whether that is a good idea", "i am not sure whether that is a good idea", false},
    };
    const auto recogniser = makeRecogniser();
    ASSERT_TRUE(recogniser);
    for (const Row& row : rows) {
        const HeardUtterance heard = hear(*recogniser, spoken("slt", row.spoken));
        EXPECT_EQ(heard.text, row.text);
        EXPECT_EQ(heard.isCommand, row.isCommand) << row.spoken;
    }
    EXPECT_EQ(hear(*recogniser, Samples(SpeechRecogniser::sampleRateHz)), HeardUtterance{}) << "silence";
    EXPECT_EQ(hear(*recogniser, {}), HeardUtterance{}) << "nothing at all";
}

TEST(SpokenRequest, forgetsWhatWasNotFinished)
{
    const auto recogniser = makeRecogniser();
    ASSERT_TRUE(recogniser);
    recogniser->begin();
    recogniser->feed(spoken("slt", "find my note about the garage code"));
    EXPECT_EQ(hear(*recogniser, spoken("slt", "never mind")).text, "never mind");
}

TEST(SpokenRequest, isHeardInTwoThreadsAtOnce)
{
    const Samples first = spoken("slt", "remind me on sunday at noon to call my sister");
    const Samples second = spoken("rms", "remind me in two hours to buy some milk");
    std::string texts[2];
    {
        std::jthread left([&] { texts[0] = hear(*makeRecogniser(), first).text; });
        std::jthread right([&] { texts[1] = hear(*makeRecogniser(), second).text; });
    }
    EXPECT_EQ(texts[0], "remind me on sunday at noon to call my sister");
    EXPECT_EQ(texts[1], "remind me in 2 hours to buy some milk");
}

TEST(SpeechModels, saysWhatIsMissing)
{
    const auto made = SpeechRecogniser::create(SpeechModels::find("/nowhere"));
    EXPECT_FALSE(made.recogniser);
    EXPECT_NE(made.problem.find("/nowhere/../share/quorvell/speech/"), std::string::npos);
}

TEST(SpeechVoice, deliversWhileItSpeaksAndStopsWhenAsked)
{
    const char* const text = "This is a rather long sentence, so that the voice has something to say for a while. "
                             "And this is another one.";
    for (const std::string& name : {std::string("slt"), std::string("kal16"), std::string("unknown")}) {
        SCOPED_TRACE(name);
        SpeechVoice voice(name);
        std::size_t all = 0;
        std::size_t pieces = 0;
        voice.speak(text,
            [&](std::span<const std::int16_t> piece) {
                all += piece.size();
                ++pieces;
            },
            {});
        EXPECT_GT(pieces, 10u);
        EXPECT_GT(all, std::size_t{4} * SpeechVoice::sampleRateHz);

        std::stop_source stop;
        std::size_t heard = 0;
        voice.speak(
            text,
            [&](std::span<const std::int16_t> piece) {
                heard += piece.size();
                stop.request_stop();
            },
            stop.get_token());
        EXPECT_GT(heard, 0u);
        EXPECT_LT(heard, all / 4);
    }
}

} // namespace

} // namespace quorvell
