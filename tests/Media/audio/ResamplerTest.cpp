// SPDX-License-Identifier: MIT
// Catches clicks where pieces of a stream meet, and samples that are no numbers.
#include "Media/audio/Resampler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace quorvell {
namespace {

std::vector<float> tone(int rateHz, double seconds)
{
    std::vector<float> samples(static_cast<std::size_t>(rateHz * seconds));
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] = 0.5F * static_cast<float>(std::sin(2 * std::numbers::pi * 300 * index / rateHz));
    return samples;
}

std::vector<float> converted(int fromHz, int toHz, std::size_t pieceSize)
{
    Resampler resampler(fromHz, toHz);
    const auto input = tone(fromHz, 1);
    std::vector<float> output;
    for (std::size_t start = 0; start < input.size(); start += pieceSize) {
        const auto piece =
            resampler.process(std::span(input).subspan(start, std::min(pieceSize, input.size() - start)));
        output.insert(output.end(), piece.begin(), piece.end());
    }
    const auto rest = resampler.finish();
    output.insert(output.end(), rest.begin(), rest.end());
    return output;
}

TEST(Resampler, piecesGiveTheSameStreamAsTheWhole)
{
    for (const auto& [fromHz, toHz] : {std::pair{24000, 16000}, {16000, 24000}, {44100, 24000}, {24000, 24000}}) {
        SCOPED_TRACE(fromHz);
        const auto whole = converted(fromHz, toHz, 1'000'000);
        EXPECT_NEAR(static_cast<double>(whole.size()), toHz, 2);
        for (const std::size_t pieceSize : {std::size_t(37), std::size_t(960)}) {
            const auto pieces = converted(fromHz, toHz, pieceSize);
            ASSERT_NEAR(static_cast<double>(pieces.size()), static_cast<double>(whole.size()), 1);
            for (std::size_t index = 0; index < std::min(pieces.size(), whole.size()); ++index)
                ASSERT_NEAR(pieces[index], whole[index], 0.001) << index;
        }
    }
}

TEST(Resampler, survivesSamplesThatAreNoNumbers)
{
    Resampler resampler(16000, 24000);
    std::vector<float> input = tone(16000, 0.1);
    input[10] = std::numeric_limits<float>::quiet_NaN();
    input[20] = std::numeric_limits<float>::infinity();
    for (const float sample : resampler.process(input))
        EXPECT_LT(std::abs(sample), 1.0F);
    EXPECT_EQ(toInt16(std::vector<float>{2, -2, 1, NAN}), (std::vector<std::int16_t>{32767, -32768, 32767, 0}));
}

} // namespace
} // namespace quorvell
