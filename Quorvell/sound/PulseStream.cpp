// SPDX-License-Identifier: MIT
#include "Quorvell/sound/PulseStream.h"

#include "Quorvell/sound/PulseLock.h"

#include <pulse/stream.h>

#include <utility>

namespace quorvell {

namespace {

constexpr pa_sample_spec format{PA_SAMPLE_S16LE, PulseStream::sampleRateHz, 1};
constexpr std::uint32_t asTheServerLikes = static_cast<std::uint32_t>(-1);
/// The server asks for 20 ms at a time, and lets that little lie in the device, however long its queue.
constexpr std::uint32_t requestBytes = PulseStream::sampleRateHz * 2 / 50;
/// Sound starts with the first sample. 0 would let the server's position run on while there is nothing to play.
constexpr std::uint32_t oneSample = 2;

pa_buffer_attr queueOf(std::uint32_t bytes)
{
    return {asTheServerLikes, bytes, oneSample, requestBytes, bytes};
}

} // namespace

PulseStream::PulseStream(SoundServer& server, const Request& request, Reports reports)
    : m_server(server)
    , m_reports(std::move(reports))
    , m_post(server.scheduler())
{
    const PulseLock lock(m_server.loop());
    m_stream = pa_stream_new(m_server.context(), request.title.c_str(), &format, nullptr);
    if (!m_stream || !connect(request))
        m_post([this] { changed(PA_STREAM_FAILED); });
}

bool PulseStream::connect(const Request& request)
{
    pa_stream_set_state_callback(
        m_stream,
        [](pa_stream* stream, void* self) {
            auto& it = *static_cast<PulseStream*>(self);
            it.m_post([&it, state = pa_stream_get_state(stream)] { it.changed(state); });
        },
        this);
    const auto movable = [](pa_stream* stream, std::size_t bytes, void* self) {
        static_cast<PulseStream*>(self)->m_reports.movable(stream, bytes);
    };
    const char* device = request.device.empty() ? nullptr : request.device.c_str();
    const pa_buffer_attr queue = queueOf(request.queueBytes);
    if (request.direction == Direction::record) {
        pa_stream_set_read_callback(m_stream, movable, this);
        return pa_stream_connect_record(m_stream, device, &queue, PA_STREAM_ADJUST_LATENCY) >= 0;
    }
    pa_stream_set_write_callback(m_stream, movable, this);
    const auto flags = static_cast<pa_stream_flags_t>(
        PA_STREAM_EARLY_REQUESTS | PA_STREAM_AUTO_TIMING_UPDATE | PA_STREAM_START_CORKED);
    return pa_stream_connect_playback(m_stream, device, &queue, flags, nullptr, nullptr) >= 0;
}

PulseStream::~PulseStream()
{
    const PulseLock lock(m_server.loop());
    if (!m_stream)
        return;
    // One that the server is still making cannot be ended yet; its connection keeps it until then.
    pa_stream_set_state_callback(
        m_stream,
        [](pa_stream* stream, void*) {
            if (pa_stream_get_state(stream) == PA_STREAM_READY)
                pa_stream_disconnect(stream);
        },
        nullptr);
    pa_stream_set_read_callback(m_stream, nullptr, nullptr);
    pa_stream_set_write_callback(m_stream, nullptr, nullptr);
    pa_stream_disconnect(m_stream);
    pa_stream_unref(m_stream);
}

void PulseStream::changed(int state)
{
    // Copies, since the owner may destroy the stream when it hears this.
    const Reports reports = m_reports;
    if (state == PA_STREAM_READY) {
        m_hasStarted = true;
        reports.started();
    }
    if (state == PA_STREAM_FAILED || state == PA_STREAM_TERMINATED)
        reports.ended();
}

void PulseStream::setQueue(std::uint32_t bytes)
{
    const PulseLock lock(m_server.loop());
    const pa_buffer_attr queue = queueOf(bytes);
    if (pa_operation* operation = pa_stream_set_buffer_attr(m_stream, &queue, nullptr, nullptr))
        pa_operation_unref(operation);
}

std::string PulseStream::device() const
{
    const PulseLock lock(m_server.loop());
    const bool isReady = m_stream && pa_stream_get_state(m_stream) == PA_STREAM_READY;
    const char* name = isReady ? pa_stream_get_device_name(m_stream) : nullptr;
    return name ? name : "";
}

} // namespace quorvell
