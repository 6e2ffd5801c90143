#include "Quorvell/sound/PulsePlayer.h"

#include "Quorvell/sound/PlaybackTiming.h"
#include "Quorvell/sound/PulseLock.h"

#include <pulse/rtclock.h>
#include <pulse/stream.h>
#include <pulse/timeval.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace quorvell {

namespace {

constexpr std::int64_t bytesPerSample = 2;

void release(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

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
    , m_reports(std::move(reports))
{
    m_reference.setQueueLength(queueBytes / bytesPerSample);
    m_server.addListener(*this);
    review();
}

PulsePlayer::~PulsePlayer()
{
    m_server.removeListener(*this);
}

void PulsePlayer::chooseDevice(std::string name)
{
    m_chosen = std::move(name);
    review();
}

void PulsePlayer::play(std::span<const std::uint8_t> pcm)
{
    std::vector<std::int16_t> block(pcm.size() / bytesPerSample);
    std::memcpy(block.data(), pcm.data(), block.size() * bytesPerSample);
    if (block.empty())
        return;
    if (!m_stream) {
        m_server.retry();
        if (m_isHopeless) {
            tell(m_server.isReady() ? SoundProblem::noLoudspeaker : m_server.problem());
            return;
        }
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
    if (!m_stream || !m_stream->hasStarted() || m_waiting.samples == 0)
        return;
    pump(m_stream->handle(), pa_stream_writable_size(m_stream->handle()));
    if (std::exchange(m_isCorked, false))
        release(pa_stream_cork(m_stream->handle(), 0, nullptr, nullptr));
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
    if (!m_stream || isSilent())
        return;
    m_heardBefore = heard();
    m_heardOfGiven = 0;
    m_waiting.given = 0;
    m_beginning = {};
    release(pa_stream_flush(m_stream->handle(), nullptr, nullptr));
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
    const pa_timing_info* info =
        m_stream && m_stream->hasStarted() ? pa_stream_get_timing_info(m_stream->handle()) : nullptr;
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

void PulsePlayer::review()
{
    if (!m_server.isReady()) {
        loseStream();
        withoutLoudspeaker(m_server.problem());
        return;
    }
    const SoundDevice* device = m_server.devices().loudspeaker(m_chosen);
    if (!device) {
        loseStream();
        withoutLoudspeaker(SoundProblem::noLoudspeaker);
        return;
    }
    const bool isSame = device->name == m_wantedDevice || (m_stream && m_stream->device() == device->name);
    if (m_stream && isSame) {
        m_wantedDevice = device->name; // the server may have moved it there by itself
        return;
    }
    openStream(*device);
}

void PulsePlayer::openStream(const SoundDevice& device)
{
    loseStream();
    m_wantedDevice = device.name;
    const bool isDefault = device.name == m_server.devices().defaultLoudspeaker && device.name != m_chosen;
    m_stream = std::make_unique<PulseStream>(m_server,
        PulseStream::Request{PulseStream::Direction::playback, "Voice", isDefault ? "" : device.name, queueBytes},
        PulseStream::Reports{[this](pa_stream* stream, std::size_t bytes) {
                                 if (!m_isCorked)
                                     pump(stream, bytes);
                             },
            [this] { streamStarted(); }, [this] { streamEnded(); }});
}

void PulsePlayer::streamStarted()
{
    m_giveUp.cancel();
    m_isHopeless = false;
    m_retries = {};
    if (std::exchange(m_told, SoundProblem::none) != SoundProblem::none)
        m_reports.recovered();
    const PulseLock lock(m_server.loop());
    if (const pa_buffer_attr* queue = pa_stream_get_buffer_attr(m_stream->handle()))
        m_reference.setQueueLength(queue->tlength / bytesPerSample);
    m_beginning = {pa_rtclock_now(), 0};
    startStream();
}

void PulsePlayer::streamEnded()
{
    loseStream();
    if (const auto wait = m_retries.ended())
        m_retry = m_server.scheduler().after(*wait, [this] { review(); });
    else
        withoutLoudspeaker(SoundProblem::deviceBusy);
}

void PulsePlayer::loseStream()
{
    m_retry.cancel();
    m_rest.cancel();
    m_wantedDevice.clear();
    if (!m_stream)
        return;
    {
        const PulseLock lock(m_server.loop());
        m_heardBefore = heard();
        m_heardOfGiven = 0;
        m_waiting.given = 0;
        m_reference.forgetUnplayed();
    }
    m_stream.reset();
    m_isCorked = true;
}

void PulsePlayer::withoutLoudspeaker(SoundProblem problem)
{
    tell(problem);
    if (m_isHopeless || m_giveUp.isSet())
        return;
    m_giveUp = m_server.scheduler().after(patience, [this] {
        m_giveUp.cancel();
        m_isHopeless = true;
        const PulseLock lock(m_server.loop());
        forgetWaiting();
    });
}

/// Nobody misses a loudspeaker before something is to be heard.
void PulsePlayer::tell(SoundProblem problem)
{
    if (problem == SoundProblem::none || problem == m_told)
        return;
    m_told = problem;
    m_reports.failed(sentenceOf(problem));
}

void PulsePlayer::restIfSilent()
{
    const PulseLock lock(m_server.loop());
    if (!m_stream || !isSilent())
        return;
    m_rest.cancel();
    if (std::exchange(m_isCorked, true))
        return;
    release(pa_stream_cork(m_stream->handle(), 1, nullptr, nullptr));
}

} // namespace quorvell
