// SPDX-License-Identifier: MIT
#include "Quorvell/sound/AlarmPlayer.h"

#include "Quorvell/sound/PulseLock.h"
#include "Quorvell/sound/PulseOperation.h"

#include <pulse/stream.h>

#include <algorithm>
#include <span>
#include <utility>

namespace quorvell {

AlarmPlayer::AlarmPlayer(SoundServer& server, EchoReference* reference, Reports reports)
    : m_server(server)
    , m_reference(reference)
    , m_reports(std::move(reports))
    , m_stream(server, *this, {PulseStream::Direction::playback, "Alarm", queueBytes},
          {[this](const std::string&) { m_reports.failed(); }, [] {}})
{
}

void AlarmPlayer::start()
{
    if (m_stream.isWanted())
        return;
    m_tone.restart();
    m_stream.open();
}

void AlarmPlayer::stop()
{
    if (pa_stream* stream = m_stream.handle()) {
        const PulseLock lock(m_server.loop());
        release(pa_stream_flush(stream, nullptr, nullptr));
        if (m_reference && !(m_reports.isVoicePlaying && m_reports.isVoicePlaying()))
            m_reference->forgetUnplayed();
    }
    m_stream.close();
}

void AlarmPlayer::streamStarted()
{
    m_stream.works();
    pa_stream* stream = m_stream.handle();
    const PulseLock lock(m_server.loop());
    pump(stream, pa_stream_writable_size(stream));
    release(pa_stream_cork(stream, 0, nullptr, nullptr));
}

void AlarmPlayer::streamMovable(pa_stream* stream, std::size_t bytes)
{
    pump(stream, bytes);
}

void AlarmPlayer::pump(pa_stream* stream, std::size_t bytes)
{
    if (bytes == static_cast<std::size_t>(-1))
        return;
    const bool isHeardAlone = m_reference && !(m_reports.isVoicePlaying && m_reports.isVoicePlaying());
    for (std::size_t left = bytes / sizeof(std::int16_t); left > 0;) {
        const auto piece = std::span(m_piece).first(std::min(left, m_piece.size()));
        m_tone.render(piece);
        if (pa_stream_write(stream, piece.data(), piece.size_bytes(), nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return;
        if (isHeardAlone)
            m_reference->played(piece);
        left -= piece.size();
    }
}

} // namespace quorvell
