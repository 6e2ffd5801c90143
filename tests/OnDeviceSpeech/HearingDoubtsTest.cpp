// SPDX-License-Identifier: MIT
// Catches hours that two searches heard differently and nobody asks about, and doubts where there is one reading.
#include "OnDeviceSpeech/HearingDoubts.h"

#include "OnDeviceSpeech/SoundQuality.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace quorvell {

namespace {

Decoder::Result heard(
    const char* text, const char* faint = "", float confidence = 1, std::vector<std::string> others = {})
{
    Decoder::Result result{.text = text, .others = std::move(others)};
    std::istringstream words(text);
    for (std::string word; words >> word;)
        result.words.push_back({word, word == faint ? confidence : 1.0F});
    return result;
}

} // namespace

TEST(HearingDoubts, findsOtherTimesAndNoOtherWords)
{
    using Texts = std::vector<std::string>;
    const char* const said = "remind me at eight fifteen to feed the cat";
    const Texts others{"remind me at ten fifteen to feed the cat", "remind me at ten fifteen to feed a cat",
        "remind me at eight fifteen to feed the car"};
    struct Row {
        const char* name;
        Decoder::Result first;
        Decoder::Result second;
        Texts found;
    };
    const Row rows[] = {
        {"both agree", heard(said), heard(said), {}},
        {"other words", heard(said), heard("remind me at eight fifteen to free the cat"), {}},
        {"another hour", heard(said), heard("remind me yet nine fifteen to feed the cat out"),
            {"remind me at nine fifteen to feed the cat"}},
        {"an hour is missing", heard(said), heard("remind me a fifteen to feed the cat"), {}},
        {"little confidence in the hour", heard(said, "eight", 0.4F, others), heard(said),
            {"remind me at ten fifteen to feed the cat"}},
        {"little confidence in another word", heard(said, "cat", 0.1F, others), heard(said), {}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(HearingDoubts::otherTimes(row.first, row.second), row.found) << row.name;
}

TEST(HearingDoubts, knowsTwinsAndFaintNames)
{
    const auto twins = HearingDoubts::twins("at eight fifteen or five forty five or six thirty");
    ASSERT_EQ(twins.size(), 3u);
    EXPECT_EQ(twins[0].words, "at ten fifteen or five forty five or six thirty");
    EXPECT_EQ(twins[1].words, "at eight fifty or five forty five or six thirty");
    EXPECT_EQ(twins[2].words, "at eight fifteen or five forty five or six thirteen");
    EXPECT_LT(twins[2].margin, twins[1].margin) << "a rare hour";
    EXPECT_GT(HearingDoubts::twins("at six thirteen").front().margin, 1000) << "a rare hour is always asked about";
    EXPECT_TRUE(HearingDoubts::twins("call five guys").empty());

    EXPECT_EQ(HearingDoubts::withSpan("remind me and ten minutes to eat"), "remind me in ten minutes to eat");
    EXPECT_EQ(HearingDoubts::withSpan("of an hour remind me to eat"), "in an hour remind me to eat");
    EXPECT_EQ(HearingDoubts::withSpan("remind me an hour to eat"), "remind me in an hour to eat");
    for (const char* other : {"remind me ten minutes before lunch", "remind me of the ten minutes",
             "call ana and ten others", "remind me in ten minutes"})
        EXPECT_FALSE(HearingDoubts::withSpan(other)) << other;

    const char* const lunch = "put lunch with donna in my calendar";
    EXPECT_EQ(HearingDoubts::faintNames(heard(lunch, "donna", 0.1F)), std::vector<std::string>{"donna"});
    EXPECT_TRUE(HearingDoubts::faintNames(heard(lunch, "donna", 0.5F)).empty());
    EXPECT_TRUE(HearingDoubts::faintNames(heard(lunch, "calendar", 0.1F)).empty());
}

TEST(SoundQuality, tellsNoiseAndTelephonesFromAGoodMicrophone)
{
    std::mt19937 random(1);
    std::normal_distribution<double> chance;
    // A second of quiet, a vowel, a hissing sound, quiet again.
    const auto sound = [&](double noise, double hiss) {
        std::vector<std::int16_t> samples;
        for (int place = 0; place < 4 * 16000; ++place) {
            const double vowel = place / 16000 == 1 ? 6000 * std::sin(2 * std::numbers::pi * 300 * place / 16000) : 0;
            const double hissing = place / 16000 == 2 ? hiss * chance(random) : 0;
            samples.push_back(static_cast<std::int16_t>(vowel + hissing + noise * chance(random)));
        }
        return samples;
    };
    EXPECT_EQ(soundQualityOf(sound(3, 1000)), SoundQuality::good);
    EXPECT_EQ(soundQualityOf(sound(700, 1000)), SoundQuality::noisy);
    EXPECT_EQ(soundQualityOf(sound(3, 0)), SoundQuality::narrow);
    EXPECT_EQ(soundQualityOf({}), SoundQuality::good);
}

} // namespace quorvell
