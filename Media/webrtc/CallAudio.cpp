// SPDX-License-Identifier: MIT
#include "Media/webrtc/CallAudio.h"

#include "Media/audio/SampleBytes.h"

#include <algorithm>
#include <cstdlib>

namespace quorvell {

namespace {

/// Above what Opus makes of silence (a few steps of 16 bits), below any voice.
constexpr int quietestSound = 33;
constexpr int framesPerReport = 2;
constexpr std::size_t heardCapacity = WebRTCPeerOptions::sampleRate;
/// The least that stays queued when a backlog is caught up, so that an uneven microphone does not run dry.
constexpr std::size_t framesLeftQueued = 4;

/// A room's own noise varies by so much.
constexpr int noiseSpread = 2;
/// A louder "noise" is speech without a pause.
constexpr int loudestNoise = 400;
constexpr std::size_t framesOfRoom = 100;

int peakOf(std::span<const std::int16_t> samples)
{
    int peak = 0;
    for (const std::int16_t sample : samples)
        peak = std::max(peak, std::abs(sample));
    return peak;
}

std::size_t samplesIn(std::chrono::milliseconds time)
{
    return static_cast<std::size_t>(std::max<std::int64_t>(time.count(), 10)) * WebRTCPeerOptions::sampleRate / 1000;
}

} // namespace

CallAudio::CallAudio(const WebRTCPeerOptions& options, Heard heard)
    : m_backlog(options.backlog)
    , m_hangOverFrames(static_cast<int>(options.quietReported / frameLength))
    , m_heard(std::move(heard))
    , m_quiet(quietestSound)
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
    learnRoom(samples);
    return m_outgoing.write(samples) == samples.size();
}

/// The quietest of the last frames is what the room sounds like when nobody speaks: quiet is what is no louder. A gate
/// that opens sends what lay before the speech along, so it is known from the first word on.
void CallAudio::learnRoom(std::span<const std::int16_t> samples)
{
    for (; samples.size() >= frameSamples; samples = samples.subspan(frameSamples))
        m_peaks.push_back(peakOf(samples.first(frameSamples)));
    while (m_peaks.size() > framesOfRoom)
        m_peaks.pop_front();
    const int noise = m_peaks.empty() ? 0 : std::min(*std::ranges::min_element(m_peaks), loudestNoise);
    m_quiet = std::max(quietestSound, noise * noiseSpread);
}

void CallAudio::frameToSend(Frame& frame)
{
    std::size_t count = m_outgoing.read(frame);
    while (m_backlog == WebRTCPeerOptions::Backlog::caughtUp && count == frame.size() && peakOf(frame) < m_quiet
        && m_outgoing.waiting() > framesLeftQueued * frameSamples)
        count = m_outgoing.read(frame);
    std::fill(frame.begin() + static_cast<std::ptrdiff_t>(count), frame.end(), std::int16_t{0});
}

void CallAudio::frameHeard(const Frame& frame)
{
    if (peakOf(frame) >= quietestSound) {
        if (m_framesToReport == 0)
            m_framesUnreported = framesPerReport; // The first at once: somebody waits for it.
        m_framesToReport = m_hangOverFrames + 1;
    }
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
