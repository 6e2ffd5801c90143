#include "Quorvell/audio/EchoReference.h"

#include <algorithm>

namespace quorvell {

bool EchoReference::next(std::span<std::int16_t> frame)
{
    const std::uint64_t forgotten = m_forgotten.load(std::memory_order_acquire);
    if (forgotten > m_ring.taken())
        m_ring.skip(static_cast<std::size_t>(forgotten - m_ring.taken()));
    const std::size_t queueLength = m_queueLength.load(std::memory_order_relaxed);
    const std::size_t waiting = m_ring.available();
    if (waiting > queueLength + tolerance)
        m_ring.skip(waiting - queueLength);
    const std::size_t count = m_ring.read(frame);
    std::fill(frame.begin() + static_cast<std::ptrdiff_t>(count), frame.end(), std::int16_t{0});
    return count > 0;
}

} // namespace quorvell
