// SPDX-License-Identifier: MIT
// Takes steady noise out of speech before it is recognised.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace quorvell {

/// For sound that comes in turns: a turn begins with a moment of the room, from which the noise is learned. Sound that
/// no noise is in stays as it is but for rumble. Not thread safe.
class NoiseSuppressor {
public:
    static constexpr int sampleRateHz = 16000;
    static constexpr std::size_t frameSamples = sampleRateHz / 100; ///< 10 ms, mono.

    NoiseSuppressor();
    ~NoiseSuppressor();
    NoiseSuppressor(const NoiseSuppressor&) = delete;
    NoiseSuppressor& operator=(const NoiseSuppressor&) = delete;

    /// A new turn, in what may be another room. `room` is heard before anybody speaks: some 200 ms of it, whole frames.
    void begin(std::span<const std::int16_t> room);
    /// Cleaned in place; whole frames only. What it gives is as long as what it got, and some milliseconds late.
    void process(std::span<std::int16_t> samples);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
