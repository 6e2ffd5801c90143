// SPDX-License-Identifier: MIT
// Takes the assistant's voice and noise out of the microphone's sound, and rests where that would change nothing: while
// nothing is played, and the room is quiet or has nothing but its steady noise.
#pragma once

#include "Media/audio/EchoReference.h"
#include "Media/echo/EchoCanceller.h"
#include "Quorvell/sound/Headphones.h"
#include "Quorvell/sound/RoomNoise.h"

#include <array>
#include <cstdint>
#include <span>

namespace quorvell {

/// A rest would otherwise cost a hundredth of a core.
class CaptureCleaner {
public:
    static constexpr std::size_t chunkSamples = 960; ///< 40 ms: what the session's gate decides about at once.
    static constexpr int chunksAfterPlaying = 75; ///< Three seconds: the longest echo is long over.
    static constexpr int chunksAfterSound = 25; ///< One second, longer than the pauses of speech.
    static constexpr float quietLevel = 0.01F; ///< A quarter of the level at which speech is thought to go on.
    static constexpr float soundOverNoise = 2; ///< Less than what opens the gate.

    explicit CaptureCleaner(EchoReference& reference)
        : m_reference(reference)
    {
    }

    /// In place.
    void clean(std::span<std::int16_t, chunkSamples> captured);
    /// Nothing but the room was heard in the last chunk, and for a while before.
    bool isResting() const { return m_chunksLeft == 0; }
    /// The microphone was opened anew.
    void restart();

private:
    static constexpr std::size_t frameSamples = EchoCanceller::frameSamples;

    /// Whether anything of it can be heard.
    bool takePlayed(float heardLevel);
    void cleanFrames(std::span<std::int16_t, chunkSamples> captured);

    EchoReference& m_reference;
    EchoCanceller m_canceller;
    Headphones m_headphones;
    RoomNoise m_noise;
    std::uint64_t m_path = 0;
    std::array<std::int16_t, chunkSamples> m_played{};
    int m_chunksLeft = chunksAfterPlaying; ///< Until it may rest; at first it learns the room's noise.
};

} // namespace quorvell
