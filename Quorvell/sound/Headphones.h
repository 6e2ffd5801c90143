// SPDX-License-Identifier: MIT
// Whether the microphone hears nothing of the loudspeaker, as when headphones are on: then nothing needs to be taken
// out, and nobody who speaks over the assistant is mistaken for its echo.
#pragma once

#include <deque>

namespace quorvell {

/// Shown by a microphone that stays quiet for a while as the loudspeaker speaks. A value; levels are those of PCM, 40
/// ms each.
class Headphones {
public:
    static constexpr std::size_t window = 38; ///< One and a half seconds.
    static constexpr std::size_t longestDelay =
        13; ///< Half a second: what was played before that must have been heard.
    static constexpr float speakingLevel = 0.1F; ///< The loudspeaker says something.
    static constexpr int leastSpoken = 12; ///< So many chunks of it; pauses show nothing.
    /// The echo's share of what is played. Of the loudest speech the rest stays below what opens the gate.
    static constexpr float inaudible = 0.05F;
    static constexpr int mostDoubts = 25; ///< So long somebody may speak over it; an echo that begins lasts longer.

    void hear(float microphone, float loudspeaker);
    bool areOn() const { return m_areOn; }

private:
    std::deque<float> m_heard; ///< Oldest first, as the next.
    std::deque<float> m_played;
    bool m_areOn = false;
    int m_doubts = 0; ///< Chunks with sound in the microphone since nothing was heard of the loudspeaker.
};

} // namespace quorvell
