// SPDX-License-Identifier: MIT
// 16-bit samples from the wire, little-endian; half a sample at the end is left out.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <cstdint>
#include <vector>

namespace quorvell {

inline std::vector<std::int16_t> samplesOfBytes(const Bytes& pcm)
{
    std::vector<std::int16_t> samples(pcm.size() / 2);
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] = static_cast<std::int16_t>(pcm[2 * index] | (pcm[2 * index + 1] << 8));
    return samples;
}

/// The way back.
inline Bytes bytesOfSamples(const std::vector<std::int16_t>& samples)
{
    Bytes pcm(samples.size() * 2);
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const auto value = static_cast<std::uint16_t>(samples[index]);
        pcm[2 * index] = static_cast<std::uint8_t>(value & 0xFF);
        pcm[2 * index + 1] = static_cast<std::uint8_t>(value >> 8);
    }
    return pcm;
}

} // namespace quorvell
