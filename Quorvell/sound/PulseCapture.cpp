#include "Quorvell/sound/PulseCapture.h"

#include <pulse/stream.h>

#include <array>
#include <utility>

namespace quorvell {

namespace {

constexpr std::array<std::int16_t, 960> silence{};

/// Where the server lost sound it tells only how much: silence takes its place, so that time goes on.
void passHole(CaptureChain& chain, std::size_t bytes)
{
    for (std::size_t left = bytes / 2; left > 0;) {
        const std::size_t count = std::min(left, silence.size());
        chain.captured(std::span(silence).first(count));
        left -= count;
    }
}

/// On the sound thread, with its lock held.
void passOn(CaptureChain& chain, pa_stream* stream)
{
    const void* data = nullptr;
    std::size_t bytes = 0;
    while (pa_stream_peek(stream, &data, &bytes) >= 0 && bytes > 0) {
        if (data)
            chain.captured({static_cast<const std::int16_t*>(data), bytes / 2});
        else
            passHole(chain, bytes);
        pa_stream_drop(stream);
    }
}

} // namespace

PulseCapture::PulseCapture(SoundServer& server, EchoReference& reference, Reports reports)
    : m_server(server)
    , m_reports(std::move(reports))
    , m_post(server.scheduler())
    , m_chain(reference, [this](Bytes chunk) { chunkReady(std::move(chunk)); })
{
    m_server.addListener(*this);
}

PulseCapture::~PulseCapture()
{
    m_server.removeListener(*this);
}

void PulseCapture::chooseDevice(std::string name)
{
    m_chosen = std::move(name);
    review();
}

void PulseCapture::open()
{
    if (std::exchange(m_isWanted, true))
        return;
    m_retries = {};
    m_told = SoundProblem::none;
    m_server.retry();
    m_post([this] { review(); });
}

void PulseCapture::close()
{
    m_isWanted = false;
    review();
}

void PulseCapture::review()
{
    if (!m_isWanted || !m_server.isReady()) {
        closeStream();
        tell(m_server.problem());
        return;
    }
    const SoundDevice* device = m_server.devices().microphone(m_chosen);
    if (!device) {
        closeStream();
        tell(SoundProblem::noMicrophone);
        return;
    }
    const bool isSame = device->name == m_wantedDevice || (m_stream && m_stream->device() == device->name);
    if (m_stream && isSame) {
        m_wantedDevice = device->name; // the server may have moved it there by itself
        return;
    }
    openStream(*device);
}

void PulseCapture::openStream(const SoundDevice& device)
{
    closeStream();
    m_wantedDevice = device.name;
    m_chain.restart();
    ++m_opening;
    const bool isDefault = device.name == m_server.devices().defaultMicrophone && device.name != m_chosen;
    m_stream = std::make_unique<PulseStream>(m_server,
        PulseStream::Request{PulseStream::Direction::record, "Microphone", isDefault ? "" : device.name, pieceBytes},
        PulseStream::Reports{
            [this](pa_stream* stream, std::size_t) { passOn(m_chain, stream); }, [] {}, [this] { streamEnded(); }});
}

void PulseCapture::closeStream()
{
    m_retry.cancel();
    m_stream.reset();
    ++m_opening;
    m_wantedDevice.clear();
}

void PulseCapture::streamEnded()
{
    closeStream();
    if (const auto wait = m_retries.ended())
        m_retry = m_server.scheduler().after(*wait, [this] { review(); });
    else
        tell(SoundProblem::deviceBusy);
}

void PulseCapture::tell(SoundProblem problem)
{
    if (!m_isWanted || problem == SoundProblem::none || problem == m_told)
        return;
    m_told = problem;
    m_reports.failed(sentenceOf(problem));
}

void PulseCapture::chunkReady(Bytes chunk)
{
    m_post([this, opening = m_opening.load(), chunk = std::move(chunk)] {
        if (opening != m_opening || !m_stream)
            return;
        m_retries = {};
        if (std::exchange(m_told, SoundProblem::none) != SoundProblem::none)
            m_reports.recovered();
        m_reports.captured(chunk);
    });
}

} // namespace quorvell
