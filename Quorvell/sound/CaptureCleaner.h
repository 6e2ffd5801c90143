#pragma once

#include "Quorvell/audio/EchoReference.h"
#include "Quorvell/echo/EchoCanceller.h"

#include <array>
#include <cstdint>
#include <span>

namespace quorvell {

/// Takes the assistant's voice and noise out of the microphone's sound, and rests where that would change nothing: in a
/// room that is quiet, while nothing is played. A quiet rest would otherwise cost a hundredth of a core.
class CaptureCleaner {
public:
    static constexpr std::size_t frameSamples = EchoCanceller::frameSamples;
    static constexpr int framesAfterPlaying = 300; ///< Three seconds: the longest echo is long over.
    static constexpr int framesAfterSound = 100; ///< One second, longer than the pauses of speech.
    static constexpr float quietLevel = 0.01F; ///< A quarter of the level at which speech is thought to go on.

    explicit CaptureCleaner(EchoReference& reference)
        : m_reference(reference)
    {
    }

    /// Cleans whole frames in place, as many as there are.
    void clean(std::span<std::int16_t> captured);
    /// The microphone was opened anew.
    void restart();

private:
    void cleanFrame(std::span<std::int16_t, frameSamples> frame);

    EchoReference& m_reference;
    EchoCanceller m_canceller;
    std::array<std::int16_t, frameSamples> m_played{};
    int m_framesLeft = framesAfterPlaying; ///< Until it may rest; at first it learns the room's noise.
};

} // namespace quorvell
