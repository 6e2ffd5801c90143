// SPDX-License-Identifier: MIT
// Catches speech cut at its start or end, and noise that is sent.
#include "QuorvellCore/live/gate/MicGate.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

namespace {

AudioChunk numbered(std::size_t number)
{
    return {Bytes{static_cast<std::uint8_t>(number)}};
}

/// Runs the levels through the gate; the chunks are numbered from 0. Returns what was sent, "|" for the end mark.
std::string run(MicGate& gate, const std::vector<float>& levels)
{
    std::string sent;
    for (std::size_t index = 0; index < levels.size(); ++index) {
        for (const MicGateOutput& output : gate.process(numbered(index), levels[index]))
            sent += output.isEndMark() ? "| " : std::to_string(output.chunk->pcm.front()) + " ";
    }
    return sent;
}

std::vector<float> repeated(float level, std::size_t count)
{
    return std::vector<float>(count, level);
}

std::vector<float> joined(std::initializer_list<std::vector<float>> parts)
{
    std::vector<float> all;
    for (const auto& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace

TEST(MicGate, opensOnSpeechOnly)
{
    const std::tuple<const char*, std::vector<float>, std::string, bool> rows[] = {
        {"one loud chunk in silence", {0, 0, 0.2f, 0, 0}, "", false},
        {"two loud chunks within three", {0, 0.2f, 0, 0.2f}, "0 1 2 3 ", true},
        {"two loud chunks too far apart", {0, 0.2f, 0, 0, 0.2f}, "", false},
        {"exactly at the threshold is quiet", {0, 0.06f, 0.06f, 0.06f}, "", false},
        {"from the very first chunk", {0.2f, 0.2f}, "", false},
        {"pre-roll of ten", joined({repeated(0, 12), {0.2f, 0.2f}}), "4 5 6 7 8 9 10 11 12 13 ", true},
        {"a noisy room asks for more", joined({repeated(0.05f, 5), {0.12f, 0.12f, 0.12f}}), "", false},
        {"a noisy room, louder", joined({repeated(0.05f, 2), {0.13f, 0.13f}}), "0 1 2 3 ", true},
    };
    for (const auto& [name, levels, sent, open] : rows) {
        SCOPED_TRACE(name);
        MicGate gate;
        EXPECT_EQ(run(gate, levels), sent);
        EXPECT_EQ(gate.isOpen, open);
        EXPECT_EQ(gate.chunksHeard, static_cast<int>(levels.size()));
        EXPECT_EQ(gate.opens, open ? 1 : 0);
    }
}

TEST(MicGate, closesAfterTheHangOver)
{
    const struct Row {
        const char* name;
        std::vector<float> after;
        int sent; ///< Of the chunks after speech.
        bool open;
    } rows[] = {
        {"nineteen quiet chunks", repeated(0, 19), 19, true},
        {"the twentieth ends it", repeated(0, 20), 20, false},
        {"a sound in between starts over", joined({repeated(0, 19), {0.05f}, repeated(0, 19)}), 39, true},
        {"at the staying threshold is quiet", repeated(0.04f, 20), 20, false},
        {"just above stays", repeated(0.041f, 40), 40, true},
        {"after the end nothing is sent", joined({repeated(0, 20), repeated(0, 5)}), 20, false},
        {"a click before the end does not count after it", joined({repeated(0, 20), {0.2f}}), 20, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        MicGate gate;
        run(gate, {0, 0.2f, 0.2f});
        const std::string sent = run(gate, row.after);
        std::string expected;
        for (int number = 0; number < row.sent; ++number)
            expected += std::to_string(number) + " ";
        EXPECT_EQ(sent, expected + (row.open ? "" : "| "));
        EXPECT_EQ(gate.isOpen, row.open);
        EXPECT_EQ(gate.chunksSent, 3 + row.sent);
    }
}

TEST(MicGate, thresholdsFollowTheQuietestOfFiftyLevels)
{
    MicGate gate;
    run(gate, repeated(0.05f, 49));
    EXPECT_FLOAT_EQ(gate.openingThreshold(), 0.125f);
    EXPECT_FLOAT_EQ(gate.stayingThreshold(), 0.075f);
    run(gate, {0});
    EXPECT_FLOAT_EQ(gate.openingThreshold(), 0.06f);
    EXPECT_FLOAT_EQ(gate.stayingThreshold(), 0.04f);
    run(gate, repeated(0.05f, 49));
    EXPECT_EQ(gate.noiseFloor(), 0.0f) << "still among the last fifty";
    run(gate, {0.05f});
    EXPECT_FLOAT_EQ(gate.noiseFloor(), 0.05f);
    EXPECT_EQ(gate.levels.size(), 50u);
}

TEST(MicGate, opensByHandAndResets)
{
    MicGate gate;
    gate.hangover = 3;
    run(gate, {0, 0});
    MicGate dropping = gate;
    EXPECT_TRUE(dropping.open(MicGate::PreRoll::discard).empty());
    EXPECT_EQ(dropping.chunksSent, 0);
    EXPECT_TRUE(dropping.isOpen && dropping.preRoll.empty());
    EXPECT_EQ(gate.open(MicGate::PreRoll::send).size(), 2u);
    EXPECT_EQ(gate.chunksSent, 2);
    EXPECT_TRUE(gate.open(MicGate::PreRoll::send).empty()) << "already open";
    EXPECT_EQ(gate.opens, 1);
    EXPECT_EQ(run(gate, {0, 0, 0}), "0 1 2 | ");
    EXPECT_EQ(gate.chunksSent, 5);
    gate.reset();
    MicGate fresh;
    fresh.hangover = 3;
    EXPECT_EQ(gate, fresh);
}

} // namespace quorvell
