// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/gate/SpeechPresence.h"

#include "QuorvellCore/live/gate/PCM.h"

#include <algorithm>

namespace quorvell {

int SpeechPresence::loudChunks(std::span<const AudioChunk> chunks, float threshold)
{
    return static_cast<int>(std::count_if(chunks.begin(), chunks.end(),
        [threshold](const AudioChunk& chunk) { return PCM::levelOfInt16LE(chunk.pcm) > threshold; }));
}

bool SpeechPresence::heardSpeech(std::span<const AudioChunk> chunks)
{
    return loudChunks(chunks, speechLevel) > 1;
}

} // namespace quorvell
