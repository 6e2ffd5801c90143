#include "Quorvell/session/MicrophoneStream.h"

#include "QuorvellCore/live/gate/PCM.h"

#include <iterator>
#include <utility>

namespace quorvell {

std::vector<MicGateOutput> MicrophoneStream::captured(std::span<const std::uint8_t> pcm)
{
    std::vector<MicGateOutput> outputs;
    for (AudioChunk& chunk : chunker.append(pcm)) {
        if (!isGated) {
            outputs.push_back(MicGateOutput::sound(std::move(chunk)));
            continue;
        }
        const float level = PCM::levelOfInt16LE(chunk.pcm);
        auto released = gate.process(std::move(chunk), level);
        std::move(released.begin(), released.end(), std::back_inserter(outputs));
    }
    return outputs;
}

void MicrophoneStream::reset()
{
    gate.reset();
    chunker.buffer.clear();
}

} // namespace quorvell
