// SPDX-License-Identifier: MIT
// The steady noise of the room, as of a fan, and how much of it the noise suppression leaves.
#pragma once

#include <cstdint>
#include <deque>
#include <span>

namespace quorvell {

/// A value; levels are those of PCM, 40 ms each.
class RoomNoise {
public:
    static constexpr std::size_t window = 50; ///< Two seconds: somebody who speaks draws breath in them.

    void hear(float level);
    /// The quietest lately. 0 until it is known.
    float floor() const;

    /// While nobody speaks: the level before and after noise suppression.
    void learn(float before, float after);
    /// Makes it as quiet as the suppression did. Were the noise louder while the suppression rests, its coming back
    /// would sound like the onset of speech.
    void suppress(std::span<std::int16_t> samples) const;

private:
    std::deque<float> m_levels; ///< Oldest first.
    float m_before = 0; ///< Mean energy, as the next.
    float m_after = 0;
};

} // namespace quorvell
