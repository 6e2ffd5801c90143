// SPDX-License-Identifier: MIT
// Samples and their loudness. Pure; data is signed 16-bit little-endian mono, an odd trailing byte is ignored.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <cstdint>
#include <span>
#include <vector>

namespace quorvell {

struct PCM {
    /// Each sample times 1/32768, so -1 to just below 1.
    static std::vector<float> int16LEToFloat(std::span<const std::uint8_t> data);

    /// Each sample clamped to -1 to 1, times 32767, cut toward zero. NaN is 0.
    static Bytes floatToInt16LE(std::span<const float> samples);

    /// Loudness from 0 to 1: four times the root mean square, capped. NaN counts as 0.
    static float level(std::span<const float> samples);
    /// level(int16LEToFloat(data)) without the floats in between: judged for every captured chunk.
    static float levelOfInt16LE(std::span<const std::uint8_t> data);

    /// Whether every sample lies within -peak to peak, in 16-bit units. Less than one sample is silent.
    static bool isSilent(std::span<const std::uint8_t> data, int peak);
};

} // namespace quorvell
