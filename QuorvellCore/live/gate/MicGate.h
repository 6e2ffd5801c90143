// SPDX-License-Identifier: MIT
// Decides which microphone chunks are sent. Pure: levels in, chunks out; time is counted in chunks.
#pragma once

#include "QuorvellCore/live/gate/AudioChunk.h"
#include "QuorvellCore/live/gate/MicGateOutput.h"

#include <cstddef>
#include <deque>
#include <vector>

namespace quorvell {

/// Opens on speech onset and closes after a quiet hang-over, so that silence is neither sent nor paid for.
/// A value: copy it to fork a what-if. Not thread safe; lives with the session.
struct MicGate {
    static constexpr std::size_t preRollChunks = 10; ///< Held while closed and sent on opening: no first syllable lost.
    static constexpr int hangoverChunks = 20;
    static constexpr std::size_t floorWindow = 50; ///< Levels behind the noise floor.
    static constexpr float openLevel = 0.06f; ///< Lowest opening threshold.
    static constexpr float stayLevel = 0.04f; ///< Lowest staying threshold.
    static constexpr float openRatio = 2.5f; ///< Opening threshold over the noise floor.
    static constexpr float stayRatio = 1.5f; ///< Staying threshold over the noise floor.
    static constexpr std::size_t onsetWindow = 3; ///< Two loud chunks among so many open the gate; a click is one.
    static constexpr int onsetChunks = 2;

    enum class PreRoll { send, discard };

    int hangover = hangoverChunks; ///< The quiet chunk with this number closes the gate.
    bool isOpen = false;
    int chunksHeard = 0;
    int chunksSent = 0;
    int opens = 0;
    std::deque<AudioChunk> preRoll; ///< Oldest first.
    std::deque<float> levels; ///< Oldest first.
    std::deque<bool> recentLoud; ///< Oldest first.
    int quietChunks = 0; ///< In a row, while open.

    /// What to send for one captured chunk; `level` is its loudness, 0 to 1. Empty while closed. The last element is
    /// the end mark when the gate closes with this chunk. A level equal to a threshold is quiet.
    std::vector<MicGateOutput> process(AudioChunk chunk, float level);

    /// Opens without waiting for speech. The chunks held so far are returned, or dropped. Nothing when already open.
    std::vector<MicGateOutput> open(PreRoll held);

    /// As new, with the same hang-over.
    void reset();

    /// The quietest of the recent levels: what the room sounds like when nobody speaks.
    float noiseFloor() const;
    float openingThreshold() const;
    float stayingThreshold() const;

    bool operator==(const MicGate&) const = default;

private:
    std::vector<MicGateOutput> hearClosed(AudioChunk chunk, bool isLoud);
    std::vector<MicGateOutput> hearOpen(AudioChunk chunk, bool isLoud);
};

} // namespace quorvell
