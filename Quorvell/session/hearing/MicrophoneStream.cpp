// SPDX-License-Identifier: MIT
#include "Quorvell/session/hearing/MicrophoneStream.h"

#include "QuorvellCore/live/gate/PCM.h"

#include <utility>

namespace quorvell {

std::vector<MicrophoneStream::Step> MicrophoneStream::captured(std::span<const std::uint8_t> pcm)
{
    std::vector<Step> steps;
    for (AudioChunk& chunk : chunker.append(pcm))
        steps.push_back(judged(std::move(chunk)));
    return steps;
}

MicrophoneStream::Step MicrophoneStream::judged(AudioChunk chunk)
{
    Step step{chunk};
    if (judge == Judge::key) {
        if (!isKeyHeld)
            return step;
        step.isOnset = !std::exchange(isKeySpeech, true);
        step.speech.push_back(MicGateOutput::sound(std::move(chunk)));
        return step;
    }
    const bool wasOpen = gate.isOpen;
    const float level = PCM::levelOfInt16LE(chunk.pcm);
    step.speech = gate.process(std::move(chunk), level);
    step.isOnset = gate.isOpen && !wasOpen;
    return step;
}

void MicrophoneStream::pressKey()
{
    isKeyHeld = true;
}

bool MicrophoneStream::releaseKey()
{
    isKeyHeld = false;
    chunker.buffer.clear();
    return std::exchange(isKeySpeech, false);
}

void MicrophoneStream::reset()
{
    gate.reset();
    chunker.buffer.clear();
    isKeySpeech = false;
}

} // namespace quorvell
