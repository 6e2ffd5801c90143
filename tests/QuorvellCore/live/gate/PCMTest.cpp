// SPDX-License-Identifier: MIT
// Catches samples and loudness converted wrongly, and chunks that lose bytes.
#include "QuorvellCore/live/gate/PCM.h"

#include "QuorvellCore/live/gate/PCMChunker.h"
#include "QuorvellCore/live/gate/SpeechPresence.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <tuple>

namespace quorvell {

namespace {

Bytes samples(std::initializer_list<int> values)
{
    Bytes data;
    for (const int value : values) {
        data.push_back(static_cast<std::uint8_t>(value & 0xff));
        data.push_back(static_cast<std::uint8_t>(value >> 8 & 0xff));
    }
    return data;
}

AudioChunk chunkOfLevel(float level)
{
    return {PCM::floatToInt16LE(std::vector<float>(960, level / 4))};
}

} // namespace

TEST(PCM, floatsBecomeSamples)
{
    const float infinity = std::numeric_limits<float>::infinity();
    const std::pair<float, int> rows[] = {{0, 0}, {1, 32767}, {1.5f, 32767}, {-1, -32767}, {-2, -32767}, {0.5f, 16383},
        {-0.5f, -16383}, {0.9f / 32767, 0}, {-0.9f / 32767, 0}, {infinity, 32767}, {-infinity, -32767},
        {std::nanf(""), 0}};
    for (const auto& [sample, units] : rows)
        EXPECT_EQ(PCM::floatToInt16LE({{sample}}), samples({units})) << sample;
    EXPECT_TRUE(PCM::floatToInt16LE({}).empty());
}

TEST(PCM, samplesBecomeFloats)
{
    Bytes data = samples({0, 16384, -32768, 32767});
    data.push_back(0x7f); // half a sample
    EXPECT_EQ(PCM::int16LEToFloat(data), (std::vector<float>{0, 0.5f, -1, 32767 * 3.0517578e-5f}));
    EXPECT_TRUE(PCM::int16LEToFloat(Bytes{1}).empty());
}

TEST(PCM, levelIsFourTimesTheRootMeanSquare)
{
    const std::pair<std::vector<float>, float> rows[] = {{{}, 0}, {{0, 0}, 0}, {{0.1f, -0.1f}, 0.4f},
        {{0.2f, 0, 0, 0}, 0.4f}, {{1, 1}, 1}, {{std::nanf(""), 0}, 0}, {{std::numeric_limits<float>::infinity()}, 1}};
    for (const auto& [samples, level] : rows)
        EXPECT_FLOAT_EQ(PCM::level(samples), level);
    const Bytes data = samples({1200, -3400, 32767, -32768, 5, 0, 0, 77});
    EXPECT_EQ(PCM::levelOfInt16LE(data), PCM::level(PCM::int16LEToFloat(data)));
    EXPECT_EQ(PCM::levelOfInt16LE({}), 0.0f);
}

TEST(PCM, silenceLiesWithinThePeak)
{
    const std::tuple<Bytes, int, bool> rows[] = {{{}, 0, true}, {{0xff}, 0, true}, {samples({0, 0}), 0, true},
        {samples({3, -3}), 3, true}, {samples({4}), 3, false}, {samples({-4}), 3, false},
        {samples({-32768}), 32767, false}, {samples({-32768}), 32768, true}};
    for (const auto& [data, peak, silent] : rows)
        EXPECT_EQ(PCM::isSilent(data, peak), silent) << peak;
}

TEST(PCMChunker, cutsWholeChunksAndKeepsTheRest)
{
    PCMChunker chunker{3200, {}};
    Bytes data(7000);
    for (std::size_t index = 0; index < data.size(); ++index)
        data[index] = static_cast<std::uint8_t>(index / 32);
    Bytes whole;
    for (const AudioChunk& chunk : chunker.append(data)) {
        EXPECT_EQ(chunk.pcm.size(), 3200u);
        whole.insert(whole.end(), chunk.pcm.begin(), chunk.pcm.end());
    }
    EXPECT_EQ(chunker.buffer.size(), 600u);
    const auto rest = chunker.flush();
    ASSERT_TRUE(rest);
    whole.insert(whole.end(), rest->pcm.begin(), rest->pcm.end());
    EXPECT_EQ(whole, data);
    EXPECT_FALSE(chunker.flush());
    EXPECT_EQ(chunker.append(Bytes(3200)).size(), 1u);
    EXPECT_FALSE(chunker.flush()) << "nothing is left after an exact cut";
    EXPECT_TRUE(PCMChunker{}.append(data).empty());
}

TEST(SpeechPresence, needsTwoLoudChunks)
{
    const std::tuple<const char*, std::vector<float>, bool> rows[] = {{"nothing", {}, false},
        {"a click", {0, 0.5f, 0}, false}, {"two apart", {0.1f, 0, 0, 0.1f}, true},
        {"below", {0.039f, 0.039f, 0.039f}, false}};
    for (const auto& [name, levels, heard] : rows) {
        std::vector<AudioChunk> chunks;
        for (const float level : levels)
            chunks.push_back(chunkOfLevel(level));
        EXPECT_EQ(SpeechPresence::heardSpeech(chunks), heard) << name;
    }
    const AudioChunk quarter{samples({8192, -8192})}; // level exactly 1
    EXPECT_EQ(SpeechPresence::loudChunks({{quarter}}, 1.0f), 0) << "at the threshold is quiet";
}

} // namespace quorvell
