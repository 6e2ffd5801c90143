// SPDX-License-Identifier: MIT
#include "Quorvell/sound/PulseCapture.h"

#include <pulse/stream.h>

#include <algorithm>
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

} // namespace

PulseCapture::PulseCapture(SoundServer& server, EchoReference& reference, Reports reports)
    : m_reports(std::move(reports))
    , m_post(server.scheduler())
    , m_chain(reference, [this](CaptureChain::Chunk chunk) { chunkReady(std::move(chunk)); })
    , m_stream(server, *this, {PulseStream::Direction::record, "Microphone", pieceBytes},
          {m_reports.failed, m_reports.recovered})
{
}

void PulseCapture::streamMovable(pa_stream* stream, std::size_t)
{
    const void* data = nullptr;
    std::size_t bytes = 0;
    while (pa_stream_peek(stream, &data, &bytes) >= 0 && bytes > 0) {
        if (data)
            m_chain.captured({static_cast<const std::int16_t*>(data), bytes / 2});
        else
            passHole(m_chain, bytes);
        pa_stream_drop(stream);
    }
}

void PulseCapture::streamOpens()
{
    m_chain.restart();
    ++m_opening;
    m_roomChunks = 0;
}

void PulseCapture::chunkReady(CaptureChain::Chunk chunk)
{
    m_post([this, opening = m_opening.load(), chunk = std::move(chunk)] {
        if (opening != m_opening || !m_stream.isThere())
            return;
        m_stream.works();
        keepPace(chunk.isOnlyRoom);
        m_reports.captured(chunk.pcm);
    });
}

void PulseCapture::keepPace(bool isOnlyRoom)
{
    const bool wasResting = m_roomChunks >= chunksUntilRest;
    m_roomChunks = isOnlyRoom ? std::min(m_roomChunks + 1, chunksUntilRest) : 0;
    const bool isResting = m_roomChunks >= chunksUntilRest;
    if (isResting != wasResting)
        m_stream.setQueue(isResting ? restingPieceBytes : pieceBytes);
}

} // namespace quorvell
