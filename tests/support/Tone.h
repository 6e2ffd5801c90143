// SPDX-License-Identifier: MIT
// A sine as 16-bit little-endian mono PCM at 24000 Hz.
#pragma once

#include "Media/audio/SampleBytes.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace quorvell {

inline std::vector<std::uint8_t> tone(double hz, std::chrono::milliseconds length)
{
    std::vector<std::int16_t> samples;
    for (int index = 0; index < length.count() * 24; ++index)
        samples.push_back(static_cast<std::int16_t>(8000 * std::sin(2 * std::numbers::pi * hz * index / 24000)));
    const auto pcm = bytesOfSamples(samples);
    return {pcm.begin(), pcm.end()};
}

/// From the crossings of zero; what a wrong rate or a wrong codec changes first.
inline double pitchOf(const std::vector<std::uint8_t>& pcm)
{
    int ups = 0;
    std::int16_t before = 0;
    for (const std::int16_t sample : samplesOfBytes(pcm)) {
        ups += before < 0 && sample >= 0;
        before = sample;
    }
    return pcm.empty() ? 0 : ups * 48000.0 / static_cast<double>(pcm.size());
}

} // namespace quorvell
