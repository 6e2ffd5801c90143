// SPDX-License-Identifier: MIT
#include "Media/webrtc/CallSampleRing.h"

#include <algorithm>

namespace quorvell {

CallSampleRing::CallSampleRing(std::size_t capacity)
    : m_capacity(std::max<std::size_t>(capacity, 1))
    , m_samples(std::make_unique_for_overwrite<std::int16_t[]>(m_capacity))
{
}

std::size_t CallSampleRing::write(std::span<const std::int16_t> samples)
{
    const std::uint64_t start = m_written.load(std::memory_order_relaxed);
    // Forgotten samples keep their place until the reader has passed them: it may be among them right now.
    const std::size_t taken = static_cast<std::size_t>(start - m_read.load(std::memory_order_acquire));
    const std::size_t count = std::min(samples.size(), m_capacity - taken);
    for (std::size_t index = 0; index < count; ++index)
        m_samples[static_cast<std::size_t>((start + index) % m_capacity)] = samples[index];
    m_written.store(start + count, std::memory_order_release);
    return count;
}

void CallSampleRing::forget()
{
    m_forgotten.store(m_written.load(std::memory_order_relaxed), std::memory_order_release);
}

std::size_t CallSampleRing::read(std::span<std::int16_t> samples)
{
    const std::uint64_t start =
        std::max(m_read.load(std::memory_order_relaxed), m_forgotten.load(std::memory_order_acquire));
    const std::uint64_t end = m_written.load(std::memory_order_acquire);
    const std::size_t count = std::min(samples.size(), static_cast<std::size_t>(end - start));
    for (std::size_t index = 0; index < count; ++index)
        samples[index] = m_samples[static_cast<std::size_t>((start + index) % m_capacity)];
    m_read.store(start + count, std::memory_order_release);
    return count;
}

std::size_t CallSampleRing::waiting() const
{
    // The start before the end: the other way round it could overtake it.
    const std::uint64_t start =
        std::max(m_read.load(std::memory_order_acquire), m_forgotten.load(std::memory_order_acquire));
    return static_cast<std::size_t>(m_written.load(std::memory_order_acquire) - start);
}

} // namespace quorvell
