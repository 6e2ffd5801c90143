#include "Quorvell/sound/CaptureCleaner.h"

#include "QuorvellCore/live/gate/PCM.h"

#include <algorithm>

namespace quorvell {

void CaptureCleaner::clean(std::span<std::int16_t> captured)
{
    for (; captured.size() >= frameSamples; captured = captured.subspan(frameSamples))
        cleanFrame(captured.first<frameSamples>());
}

void CaptureCleaner::cleanFrame(std::span<std::int16_t, frameSamples> frame)
{
    const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(frame.data()), frame.size_bytes());
    if (m_reference.next(m_played))
        m_framesLeft = framesAfterPlaying;
    else if (PCM::levelOfInt16LE(bytes) > quietLevel)
        m_framesLeft = std::max(m_framesLeft, framesAfterSound);
    if (m_framesLeft == 0)
        return;
    --m_framesLeft;
    m_canceller.analyzeReverse(m_played);
    m_canceller.process(frame);
}

void CaptureCleaner::restart()
{
    m_reference.restart();
    m_framesLeft = framesAfterPlaying;
}

} // namespace quorvell
