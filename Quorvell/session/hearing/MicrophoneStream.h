// SPDX-License-Identifier: MIT
// The microphone's sound on its way to the wire: cut into chunks, and speech told apart from silence.
#pragma once

#include "QuorvellCore/live/gate/MicGate.h"
#include "QuorvellCore/live/gate/MicGateOutput.h"
#include "QuorvellCore/live/gate/PCMChunker.h"

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvell {

struct MicrophoneStream {
    static constexpr int sampleRateHz = 24000;
    static constexpr std::chrono::milliseconds chunkLength{40};
    static constexpr std::size_t chunkBytes = sampleRateHz * 2 * chunkLength.count() / 1000;

    /// What one captured chunk brings.
    struct Step {
        AudioChunk chunk;
        std::vector<MicGateOutput> speech{}; ///< What the gate lets through, chunks held before the onset included.
        bool isOnset = false; ///< Speech begins with `speech`.
    };

    /// Who decides what is speech.
    enum class Judge {
        gate,
        key, ///< Everything while the key is held.
    };

    Judge judge = Judge::gate;
    bool isKeyHeld = false;
    bool isKeySpeech = false; ///< Something was captured since the key went down.
    MicGate gate;
    PCMChunker chunker{chunkBytes, {}};

    /// For sound captured in pieces of any size: 16-bit little-endian mono.
    std::vector<Step> captured(std::span<const std::uint8_t> pcm);
    void pressKey();
    /// Whether there was speech to end.
    bool releaseKey();
    bool isHearingSpeech() const { return judge == Judge::key ? isKeySpeech : gate.isOpen; }
    /// Forgets what was held, as when a new conversation begins.
    void reset();

private:
    Step judged(AudioChunk chunk);
};

} // namespace quorvell
