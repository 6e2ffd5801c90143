// SPDX-License-Identifier: MIT
#include "Media/audio/EchoReference.h"

#include <algorithm>

namespace quorvell {

bool EchoReference::next(std::span<std::int16_t> frame)
{
    const std::size_t count = m_ring.read(frame);
    std::fill(frame.begin() + static_cast<std::ptrdiff_t>(count), frame.end(), std::int16_t{0});
    judgeLag();
    return count > 0;
}

void EchoReference::judgeLag()
{
    m_leastLag = std::min(m_leastLag, m_ring.waiting());
    if (++m_frames < judgedFrames)
        return;
    const std::size_t normal = m_queueLength.load(std::memory_order_relaxed);
    if (m_leastLag > normal + tolerance)
        m_ring.skip(m_leastLag - normal);
    m_frames = 0;
    m_leastLag = capacity;
}

void EchoReference::restart()
{
    m_ring.skip(m_ring.waiting());
    m_frames = 0;
    m_leastLag = capacity;
}

} // namespace quorvell
