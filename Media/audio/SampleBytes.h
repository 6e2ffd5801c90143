// SPDX-License-Identifier: MIT
// Samples and the bytes that they travel as: 16-bit little-endian, as they lie in the memory of every machine that this
// is built for; another one does not build.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace quorvell {

static_assert(std::endian::native == std::endian::little);

/// Half a sample at the end is left out. The bytes may lie anywhere.
inline std::vector<std::int16_t> samplesOfBytes(std::span<const std::uint8_t> pcm)
{
    std::vector<std::int16_t> samples(pcm.size() / sizeof(std::int16_t));
    if (!samples.empty())
        std::memcpy(samples.data(), pcm.data(), samples.size() * sizeof(std::int16_t));
    return samples;
}

/// A view of the samples.
inline std::span<const std::uint8_t> bytesOfSamples(std::span<const std::int16_t> samples)
{
    return {reinterpret_cast<const std::uint8_t*>(samples.data()), samples.size_bytes()};
}

} // namespace quorvell
