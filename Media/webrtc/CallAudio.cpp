// SPDX-License-Identifier: MIT
#include "Media/webrtc/CallAudio.h"

#include "Media/audio/SampleBytes.h"
#include "Media/webrtc/WebRTCPeer.h"

#include <algorithm>
#include <cstdlib>

namespace quorvell {

namespace {

/// Above what Opus makes of silence (a few steps of 16 bits), below any voice.
constexpr int quietestSound = 33;
constexpr int framesPerReport = 2;
constexpr std::size_t heardCapacity = WebRTCPeer::sampleRate;
/// The least that stays queued when a backlog is caught up, so that an uneven microphone does not run dry.
constexpr std::size_t framesLeftQueued = 4;

bool isAudible(const CallAudio::Frame& frame)
{
    return std::any_of(
        frame.begin(), frame.end(), [](std::int16_t sample) { return std::abs(sample) >= quietestSound; });
}

std::size_t samplesIn(std::chrono::milliseconds time)
{
    return static_cast<std::size_t>(std::max<std::int64_t>(time.count(), 10)) * WebRTCPeer::sampleRate / 1000;
}

} // namespace

CallAudio::CallAudio(const WebRTCPeerOptions& options, Heard heard)
    : m_backlog(options.backlog)
    , m_hangOverFrames(static_cast<int>(options.quietReported / frameLength))
    , m_heard(std::move(heard))
    , m_outgoing(samplesIn(options.mostQueuedSound))
    , m_incoming(heardCapacity)
{
    sem_init(&m_somethingHeard, 0, 0);
    m_reporter = std::thread([this] { handOn(); });
}

CallAudio::~CallAudio()
{
    m_isOver = true;
    sem_post(&m_somethingHeard);
    m_reporter.join();
    sem_destroy(&m_somethingHeard);
}

bool CallAudio::send(std::span<const std::uint8_t> pcm)
{
    const auto samples = samplesOfBytes(pcm);
    return m_outgoing.write(samples) == samples.size();
}

void CallAudio::frameToSend(Frame& frame)
{
    std::size_t count = m_outgoing.read(frame);
    while (m_backlog == WebRTCPeerOptions::Backlog::caughtUp && count == frame.size() && !isAudible(frame)
        && m_outgoing.waiting() > framesLeftQueued * frameSamples)
        count = m_outgoing.read(frame);
    std::fill(frame.begin() + static_cast<std::ptrdiff_t>(count), frame.end(), std::int16_t{0});
}

void CallAudio::frameHeard(const Frame& frame)
{
    if (isAudible(frame))
        m_framesToReport = m_hangOverFrames + 1;
    if (m_framesToReport == 0)
        return;
    --m_framesToReport;
    m_incoming.write(frame);
    if (++m_framesUnreported < framesPerReport && m_framesToReport > 0)
        return;
    m_framesUnreported = 0;
    sem_post(&m_somethingHeard);
}

void CallAudio::handOn()
{
    for (;;) {
        while (sem_wait(&m_somethingHeard) != 0) { }
        if (m_isOver)
            return;
        std::vector<std::int16_t> samples(m_incoming.waiting());
        samples.resize(m_incoming.read(samples));
        if (samples.empty())
            continue;
        const auto pcm = bytesOfSamples(samples);
        m_heard({pcm.begin(), pcm.end()});
    }
}

} // namespace quorvell
