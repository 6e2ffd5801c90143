// SPDX-License-Identifier: MIT
#include "Quorvell/sound/PulsePlayer.h"

#include "Quorvell/sound/PlaybackTiming.h"
#include "Quorvell/sound/PulseLock.h"
#include "Quorvell/sound/PulseOperation.h"

#include <pulse/rtclock.h>
#include <pulse/stream.h>
#include <pulse/timeval.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace quorvell {

namespace {

constexpr std::int64_t bytesPerSample = 2;

using Samples = std::chrono::duration<std::int64_t, std::ratio<1, PulseStream::sampleRateHz>>;

std::chrono::microseconds lengthOfBytes(std::int64_t bytes)
{
    return std::chrono::microseconds(bytes * 1'000'000 / (bytesPerSample * PulseStream::sampleRateHz));
}

PlaybackTiming timingOf(const pa_timing_info& info)
{
    PlaybackTiming timing;
    timing.queuedSamples = (info.write_index - info.read_index) / bytesPerSample;
    timing.deviceQueue = std::chrono::microseconds(info.sink_usec);
    timing.isPlaying = info.playing != 0;
    timing.silence = timing.isPlaying ? std::chrono::microseconds::zero() : lengthOfBytes(info.since_underrun);
    timing.age = std::chrono::microseconds(pa_timeval_age(&info.timestamp));
    return timing;
}

} // namespace

PulsePlayer::PulsePlayer(SoundServer& server, EchoReference& reference, Reports reports)
    : m_server(server)
    , m_reference(reference)
    , m_stream(server, *this, {PulseStream::Direction::playback, "Voice", queueBytes},
          {std::move(reports.failed), std::move(reports.recovered)})
{
    m_reference.setQueueLength(queueBytes / bytesPerSample);
    m_stream.open();
}

void PulsePlayer::play(std::span<const std::uint8_t> pcm)
{
    std::vector<std::int16_t> block(pcm.size() / bytesPerSample);
    std::memcpy(block.data(), pcm.data(), block.size() * bytesPerSample);
    if (block.empty())
        return;
    if (!m_stream.isThere()) {
        m_server.retry();
        if (m_isHopeless)
            return;
    }
    const PulseLock lock(m_server.loop());
    for (; m_waiting.block > 0; --m_waiting.block)
        m_waiting.blocks.pop_front();
    if (m_waiting.samples > static_cast<std::int64_t>(mostWaitingSamples))
        return;
    if (isSilent())
        m_beginning = {pa_rtclock_now(), m_waiting.given};
    m_waiting.samples += static_cast<std::int64_t>(block.size());
    m_waiting.blocks.push_back(std::move(block));
    startStream();
}

/// Gives what the server can take, and lets it run.
void PulsePlayer::startStream()
{
    pa_stream* stream = m_stream.handle();
    if (!stream || m_waiting.samples == 0)
        return;
    pump(stream, pa_stream_writable_size(stream));
    if (std::exchange(m_isCorked, false))
        release(pa_stream_cork(stream, 0, nullptr, nullptr));
    if (!m_rest.isSet())
        m_rest = m_server.scheduler().every(restAfter, [this] { restIfSilent(); });
}

void PulsePlayer::pump(pa_stream* stream, std::size_t bytes)
{
    if (bytes == static_cast<std::size_t>(-1))
        return;
    while (bytes >= bytesPerSample && m_waiting.block < m_waiting.blocks.size()) {
        const std::vector<std::int16_t>& block = m_waiting.blocks[m_waiting.block];
        const std::size_t count = std::min(bytes / bytesPerSample, block.size() - m_waiting.offset);
        const auto samples = std::span(block).subspan(m_waiting.offset, count);
        if (pa_stream_write(stream, samples.data(), samples.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return;
        m_reference.played(samples);
        bytes -= samples.size_bytes();
        m_waiting.given += static_cast<std::int64_t>(count);
        m_waiting.samples -= static_cast<std::int64_t>(count);
        m_waiting.offset += count;
        if (m_waiting.offset == block.size()) {
            ++m_waiting.block;
            m_waiting.offset = 0;
        }
    }
}

void PulsePlayer::stop()
{
    const PulseLock lock(m_server.loop());
    forgetWaiting();
    if (!m_stream.handle() || isSilent())
        return;
    forgetGiven();
    release(pa_stream_flush(m_stream.handle(), nullptr, nullptr));
}

void PulsePlayer::forgetGiven()
{
    m_heardBefore = heard();
    m_heardOfGiven = 0;
    m_waiting.given = 0;
    m_beginning = {};
    m_reference.forgetUnplayed();
}

void PulsePlayer::forgetWaiting()
{
    m_waiting.blocks.clear();
    m_waiting.block = 0;
    m_waiting.offset = 0;
    m_waiting.samples = 0;
}

std::int64_t PulsePlayer::heardOfGiven() const
{
    const pa_timing_info* info = m_stream.handle() ? pa_stream_get_timing_info(m_stream.handle()) : nullptr;
    // Right after a flush the positions are unknown for a moment.
    if (!info || info->write_index_corrupt || info->read_index_corrupt)
        return m_heardOfGiven;
    const std::int64_t heard = m_waiting.given - timingOf(*info).unplayed(m_waiting.given, PulseStream::sampleRateHz);
    const std::chrono::microseconds sounding(pa_rtclock_now() - m_beginning.microseconds);
    const std::int64_t most = m_beginning.heardOfGiven + std::chrono::floor<Samples>(sounding).count();
    m_heardOfGiven = std::max(m_heardOfGiven, std::min(heard, most));
    return m_heardOfGiven;
}

std::chrono::milliseconds PulsePlayer::unplayed() const
{
    const PulseLock lock(m_server.loop());
    return std::chrono::ceil<std::chrono::milliseconds>(Samples(m_waiting.samples + m_waiting.given - heardOfGiven()));
}

std::chrono::milliseconds PulsePlayer::played() const
{
    const PulseLock lock(m_server.loop());
    return std::chrono::floor<std::chrono::milliseconds>(Samples(heard()));
}

void PulsePlayer::streamMovable(pa_stream* stream, std::size_t bytes)
{
    if (!m_isCorked)
        pump(stream, bytes);
}

void PulsePlayer::streamStarted()
{
    m_giveUp.cancel();
    m_isHopeless = false;
    m_stream.works();
    const PulseLock lock(m_server.loop());
    if (const pa_buffer_attr* queue = pa_stream_get_buffer_attr(m_stream.handle()))
        m_reference.setQueueLength(queue->tlength / bytesPerSample);
    m_beginning = {pa_rtclock_now(), 0};
    startStream();
}

void PulsePlayer::streamGoes()
{
    m_rest.cancel();
    const PulseLock lock(m_server.loop());
    forgetGiven();
    m_isCorked = true;
}

void PulsePlayer::streamMissing()
{
    if (m_isHopeless || m_giveUp.isSet())
        return;
    m_giveUp = m_server.scheduler().after(patience, [this] {
        m_giveUp.cancel();
        m_isHopeless = true;
        const PulseLock lock(m_server.loop());
        forgetWaiting();
    });
}

void PulsePlayer::restIfSilent()
{
    const PulseLock lock(m_server.loop());
    if (!m_stream.handle() || !isSilent())
        return;
    m_rest.cancel();
    if (!std::exchange(m_isCorked, true))
        release(pa_stream_cork(m_stream.handle(), 1, nullptr, nullptr));
}

} // namespace quorvell
