// SPDX-License-Identifier: MIT
#include "Media/webrtc/CallAudio.h"

#include "Media/webrtc/WebRTCPeer.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

namespace quorvell {

namespace {

/// Above what Opus makes of silence (a few steps of 16 bits), below any voice.
constexpr int quietestSound = 33;
constexpr int hangOverFrames = 30;
constexpr int framesPerReport = 2;
constexpr std::size_t heardCapacity = WebRTCPeer::sampleRate;
/// The least that stays queued when a backlog is caught up, so that an uneven microphone does not run dry.
constexpr std::size_t framesLeftQueued = 4;

bool isAudible(const CallAudio::Frame& frame)
{
    return std::any_of(
        frame.begin(), frame.end(), [](std::int16_t sample) { return std::abs(sample) >= quietestSound; });
}

/// The machine is little-endian, and so is the sound; another one does not build.
std::vector<std::int16_t> samplesOf(std::span<const std::uint8_t> pcm)
{
    static_assert(std::endian::native == std::endian::little);
    std::vector<std::int16_t> samples(pcm.size() / sizeof(std::int16_t));
    if (!samples.empty())
        std::memcpy(samples.data(), pcm.data(), samples.size() * sizeof(std::int16_t));
    return samples;
}

std::size_t samplesIn(std::chrono::milliseconds time)
{
    return static_cast<std::size_t>(std::max<std::int64_t>(time.count(), 10)) * WebRTCPeer::sampleRate / 1000;
}

} // namespace

CallAudio::CallAudio(const WebRTCPeerOptions& options, Heard heard)
    : m_backlog(options.backlog)
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
    const auto samples = samplesOf(pcm);
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
        m_framesToReport = hangOverFrames + 1;
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
        std::vector<std::uint8_t> pcm(samples.size() * sizeof(std::int16_t));
        std::memcpy(pcm.data(), samples.data(), pcm.size());
        m_heard(std::move(pcm));
    }
}

} // namespace quorvell
