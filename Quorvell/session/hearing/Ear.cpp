// SPDX-License-Identifier: MIT
#include "Quorvell/session/hearing/Ear.h"

#include <utility>

namespace quorvell {

Ear::Ear(Ports ports, SessionSettings::Listening listening)
    : m_ports(std::move(ports))
    , m_listening(listening)
{
    if (isBehindKey())
        m_stream.judge = MicrophoneStream::Judge::key;
}

void Ear::openForConversation()
{
    m_isInConversation = true;
    m_stream.reset();
    applyToCapture();
}

void Ear::closeAfterConversation()
{
    m_isInConversation = false;
    m_release.cancel();
    m_stream.releaseKey();
    m_stream.reset();
    applyToCapture();
}

void Ear::setMuted(Muting muting)
{
    if (std::exchange(m_muting, muting) == muting)
        return;
    const bool isSpeechCut = isHearingSpeech();
    m_stream.reset();
    applyToCapture();
    if (isSpeechCut)
        tellSpeechCut();
}

void Ear::pressKey()
{
    if (!isBehindKey())
        return;
    m_release.cancel();
    m_stream.pressKey();
    applyToCapture();
}

void Ear::releaseKey()
{
    if (m_stream.isKeyHeld)
        m_release = m_ports.scheduler.after(keyTail, [this] { finishRelease(); });
}

void Ear::finishRelease()
{
    const bool isSpeechCut = m_stream.releaseKey();
    applyToCapture();
    if (isSpeechCut)
        tellSpeechCut();
}

/// Not every protocol has a word for the end of speech, and no sound at all may as well be a slow network.
void Ear::tellSpeechCut()
{
    const auto silence = MicGateOutput::sound({Bytes(MicrophoneStream::chunkBytes)});
    std::vector<MicGateOutput> ending(quietChunks, silence);
    ending.push_back(MicGateOutput::endMark());
    m_ports.speechCut(std::move(ending));
}

std::vector<MicrophoneStream::Step> Ear::captured(std::span<const std::uint8_t> pcm)
{
    if (!isListening())
        return {};
    auto steps = m_stream.captured(pcm);
    tellState();
    return steps;
}

Bytes Ear::startAfresh()
{
    Bytes held;
    for (const AudioChunk& chunk : m_stream.gate.preRoll)
        held.insert(held.end(), chunk.pcm.begin(), chunk.pcm.end());
    m_stream.reset();
    return held;
}

bool Ear::isListening() const
{
    if (!m_isInConversation || isMuted() || m_listening == SessionSettings::Listening::none)
        return false;
    return !isBehindKey() || m_stream.isKeyHeld;
}

void Ear::applyToCapture()
{
    if (AudioCapture* capture = m_ports.capture) {
        if (isListening() && !capture->isOpen())
            capture->open();
        else if (!isListening() && capture->isOpen())
            capture->close();
    }
    tellState();
}

void Ear::tellState()
{
    using State = SessionAudience::Ear;
    const State state = isMuted() ? State::muted
        : !isListening()          ? State::closed
        : isHearingSpeech()       ? State::hearing
                                  : State::open;
    if (std::exchange(m_told, state) != state)
        m_ports.observer.earChanged(state);
}

} // namespace quorvell
