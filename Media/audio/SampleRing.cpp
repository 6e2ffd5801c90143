// SPDX-License-Identifier: MIT
#include "Media/audio/SampleRing.h"

#include <algorithm>

namespace quorvell {

SampleRing::SampleRing(std::size_t capacity)
    : m_capacity(std::max<std::size_t>(capacity, 1))
    , m_samples(std::make_unique_for_overwrite<std::int16_t[]>(m_capacity))
{
}

std::size_t SampleRing::write(std::span<const std::int16_t> samples)
{
    const std::uint64_t start = m_written.load(std::memory_order_relaxed);
    // Forgotten samples count as there until the reader has passed them: it may be among them right now.
    const auto held = static_cast<std::size_t>(start - m_taken.load(std::memory_order_acquire));
    const std::size_t count = std::min(samples.size(), m_capacity - held);
    const auto place = static_cast<std::size_t>(start % m_capacity);
    const std::size_t untilEnd = std::min(count, m_capacity - place);
    std::copy_n(samples.data(), untilEnd, m_samples.get() + place);
    std::copy_n(samples.data() + untilEnd, count - untilEnd, m_samples.get());
    m_written.store(start + count, std::memory_order_release);
    return count;
}

void SampleRing::forget()
{
    m_forgotten.store(m_written.load(std::memory_order_relaxed), std::memory_order_release);
}

std::size_t SampleRing::read(std::span<std::int16_t> into)
{
    const std::uint64_t start = next();
    const auto there = static_cast<std::size_t>(m_written.load(std::memory_order_acquire) - start);
    const std::size_t count = std::min(into.size(), there);
    const auto place = static_cast<std::size_t>(start % m_capacity);
    const std::size_t untilEnd = std::min(count, m_capacity - place);
    std::copy_n(m_samples.get() + place, untilEnd, into.data());
    std::copy_n(m_samples.get(), count - untilEnd, into.data() + untilEnd);
    m_taken.store(start + count, std::memory_order_release);
    return count;
}

void SampleRing::skip(std::size_t count)
{
    const std::uint64_t start = next();
    const auto there = static_cast<std::size_t>(m_written.load(std::memory_order_acquire) - start);
    m_taken.store(start + std::min(count, there), std::memory_order_release);
}

std::size_t SampleRing::waiting() const
{
    // The start before the end: the other way round it could overtake it.
    const std::uint64_t start = next();
    return static_cast<std::size_t>(m_written.load(std::memory_order_acquire) - start);
}

/// The first sample that is neither taken nor forgotten.
std::uint64_t SampleRing::next() const
{
    return std::max(m_taken.load(std::memory_order_acquire), m_forgotten.load(std::memory_order_acquire));
}

} // namespace quorvell
