// SPDX-License-Identifier: MIT
// Takes the assistant's own voice, steady noise and rumble out of the microphone's sound.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace quorvell {

/// Frames of the loudspeaker and of the microphone go in by turns, in step; it finds out by itself how much later the
/// one is heard in the other, up to half a second. Not thread safe; belongs to the thread that processes the
/// microphone.
class EchoCanceller {
public:
    static constexpr int sampleRateHz = 24000;
    static constexpr std::size_t frameSamples = sampleRateHz / 100; ///< 10 ms, mono

    EchoCanceller();
    ~EchoCanceller();
    EchoCanceller(const EchoCanceller&) = delete;
    EchoCanceller& operator=(const EchoCanceller&) = delete;

    /// What goes to the loudspeaker; never later than it is heard.
    void analyzeReverse(std::span<const std::int16_t, frameSamples> played);
    /// What the microphone captured, cleaned in place. Allocates nothing on our side.
    void process(std::span<std::int16_t, frameSamples> captured);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace quorvell
