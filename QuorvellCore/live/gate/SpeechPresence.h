// SPDX-License-Identifier: MIT
// Whether a stretch of sound holds speech at all, judged by loudness alone.
#pragma once

#include "QuorvellCore/live/gate/AudioChunk.h"

#include <span>

namespace quorvell {

struct SpeechPresence {
    static constexpr float speechLevel = 0.04f;

    /// Chunks louder than the threshold; one at the threshold is quiet.
    static int loudChunks(std::span<const AudioChunk> chunks, float threshold);
    /// At least two loud chunks: a click is one.
    static bool heardSpeech(std::span<const AudioChunk> chunks);
};

} // namespace quorvell
