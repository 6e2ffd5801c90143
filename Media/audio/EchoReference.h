// SPDX-License-Identifier: MIT
// What the loudspeaker plays, on its way to the echo canceller.
#pragma once

#include "Media/audio/SampleRing.h"

#include <atomic>
#include <cstdint>
#include <span>

namespace quorvell {

/// Pairs the loudspeaker's samples with the microphone's by counting: each captured frame takes one played frame. The
/// two devices have clocks of their own and captured frames get lost now and then, so a reference that has fallen
/// behind is brought forward: later than the echo itself it would be of no use. A microphone that is only late, as on a
/// busy computer, catches up by itself; hence the judgement over a while. One thread plays, one captures.
class EchoReference {
public:
    static constexpr std::size_t capacity = 24000; ///< One second.
    static constexpr std::size_t tolerance = 720; ///< 30 ms of lag beyond the normal one are left alone.
    static constexpr int judgedFrames = 50; ///< The least lag in half a second counts.

    /// The playing thread's: these are next in the queue to the loudspeaker.
    void played(std::span<const std::int16_t> samples) { m_ring.write(samples); }
    /// The playing thread's: what is in the queue will not sound.
    void forgetUnplayed() { m_ring.forget(); }
    /// The playing thread's: how many samples the queue to the loudspeaker normally holds.
    void setQueueLength(std::size_t samples) { m_queueLength.store(samples, std::memory_order_relaxed); }
    /// Any thread's: another loudspeaker, or headphones plugged in; how much of it the microphone hears is not known.
    void changePath() { m_paths.fetch_add(1, std::memory_order_relaxed); }

    /// The capturing thread's: differs after each change.
    std::uint64_t path() const { return m_paths.load(std::memory_order_relaxed); }
    /// The capturing thread's: what is played beside the next captured frame, silence where nothing is. False when
    /// nothing is.
    bool next(std::span<std::int16_t> frame);
    /// The capturing thread's: captures from now on.
    void restart();

private:
    void judgeLag();

    SampleRing m_ring{capacity};
    std::atomic<std::size_t> m_queueLength{960};
    std::atomic<std::uint64_t> m_paths{0};
    std::size_t m_leastLag = capacity; ///< This and the next are the capturing thread's.
    int m_frames = 0; ///< Since the last judgement.
};

} // namespace quorvell
