#pragma once

#include "QuorvellCore/live/gate/MicGate.h"
#include "QuorvellCore/live/gate/MicGateOutput.h"
#include "QuorvellCore/live/gate/PCMChunker.h"

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvell {

/// The microphone's sound on its way to the wire: cut into chunks, and silence held back if so chosen.
struct MicrophoneStream {
    static constexpr int sampleRateHz = 24000;
    static constexpr std::chrono::milliseconds chunkLength{40};
    static constexpr std::size_t chunkBytes = sampleRateHz * 2 * chunkLength.count() / 1000;

    bool isGated = true;
    MicGate gate;
    PCMChunker chunker{chunkBytes, {}};

    /// What to send for sound captured in pieces of any size: 16-bit little-endian mono.
    std::vector<MicGateOutput> captured(std::span<const std::uint8_t> pcm);
    /// Forgets what was held, as when a new conversation begins.
    void reset();
};

} // namespace quorvell
