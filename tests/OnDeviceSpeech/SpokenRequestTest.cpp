// SPDX-License-Identifier: MIT
// Real speech, made by the voice and heard by the recogniser.
#include "OnDeviceSpeech/SpeechRecogniser.h"
#include "OnDeviceSpeech/SpeechVoice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
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

std::string hear(SpeechRecogniser& recogniser, const Samples& samples)
{
    constexpr std::size_t piece = SpeechRecogniser::sampleRateHz / 25;
    recogniser.begin();
    for (std::size_t start = 0; start < samples.size(); start += piece)
        recogniser.feed(std::span(samples).subspan(start, std::min(piece, samples.size() - start)));
    const RecognisedUtterance heard = recogniser.finish();
    EXPECT_EQ(heard.problem, "");
    return heard.text;
}

struct Row {
    const char* voice;
    const char* spoken;
    std::vector<const char*> kept;
};

void expectHeard(SpeechRecogniser& recogniser, const Row& row)
{
    const std::string heard = hear(recogniser, spoken(row.voice, row.spoken));
    SCOPED_TRACE(heard);
    for (const char* kept : row.kept)
        EXPECT_NE(heard.find(kept), std::string::npos) << kept;
}

TEST(SpokenRequest, isHeardAsItIsWrittenInTwoThreadsAtOnce)
{
    const Row rows[] = {
        {"slt", "don't let me forget to lock the door tonight at ten", {"tonight at 10", "lock the door"}},
        {"rms", "set a reminder for the twelfth of december at 9:30 am to pay the rent",
            {"december 12th at 9:30 am", "pay the rent"}},
        {"slt", "pencil in coffee with Ingrid on thursday at half past ten", {"pencil in", "with ingrid", "at 10:30"}},
        {"rms", "could I squeeze in an hour tomorrow afternoon", {"squeeze in an hour tomorrow afternoon"}},
        {"rms", "yes please remember it", {"yes please remember it"}},
        {"slt", "no please don't", {"no please don't"}},
        {"slt", "i am not sure whether that is a good idea", {"i am not sure whether that is a good idea"}},
    };
    // As when the service hears while the device listens. One row is enough: four searches at once on few cores cost
    // far more work than one after the other.
    const std::jthread other([&] {
        const auto recogniser = makeRecogniser();
        ASSERT_TRUE(recogniser);
        expectHeard(*recogniser, rows[0]);
    });
    const auto recogniser = makeRecogniser();
    ASSERT_TRUE(recogniser);
    for (const Row& row : std::span(rows).subspan(1))
        expectHeard(*recogniser, row);
    EXPECT_EQ(hear(*recogniser, Samples(SpeechRecogniser::sampleRateHz)), "") << "silence";
    EXPECT_EQ(hear(*recogniser, {}), "") << "nothing at all";

    const Samples start = spoken("slt", "remind me tomorrow at five p m");
    recogniser->begin();
    recogniser->feed(start);
    recogniser->expectEnd();
    EXPECT_EQ(recogniser->heardSoFar(), "remind me tomorrow at 5 pm");
    recogniser->feed(Samples(SpeechRecogniser::sampleRateHz / 10));
    EXPECT_EQ(recogniser->finish().text, "remind me tomorrow at 5 pm") << "only quiet followed";
    recogniser->begin();
    recogniser->feed(start);
    recogniser->expectEnd();
    recogniser->feed(spoken("slt", "to call the dentist"));
    EXPECT_EQ(recogniser->finish().text, "remind me tomorrow at 5 pm to call the dentist") << "speech went on";

    recogniser->begin();
    recogniser->feed(spoken("slt", "read it to me"));
    EXPECT_EQ(hear(*recogniser, spoken("slt", "never mind")), "never mind") << "what was not finished is forgotten";
}

TEST(SpeechModels, saysWhatIsMissing)
{
    const auto made = SpeechRecogniser::create(SpeechModels::find("/nowhere"));
    EXPECT_FALSE(made.recogniser);
    EXPECT_NE(made.problem.find("/nowhere/../share/quorvell/speech/"), std::string::npos);

    SpeechModels unreadable = SpeechModels::find("/nowhere");
    unreadable.dictionary = unreadable.commandDictionary = unreadable.commandLanguageModel = "/dev/null";
    EXPECT_NE(SpeechRecogniser::create(unreadable).problem.find("pocketsphinx-en-us"), std::string::npos);
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
