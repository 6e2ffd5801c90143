// SPDX-License-Identifier: MIT
#include "Media/audio/SampleRing.h"

#include <algorithm>

namespace quorvell {

std::size_t SampleRing::available() const
{
    // Taken first: it never runs ahead of what was written before.
    const std::uint64_t taken = m_taken.load(std::memory_order_acquire);
    return static_cast<std::size_t>(m_written.load(std::memory_order_acquire) - taken);
}

std::size_t SampleRing::write(std::span<const std::int16_t> samples)
{
    const std::uint64_t start = m_written.load(std::memory_order_relaxed);
    const std::size_t count = std::min(samples.size(), m_samples.size() - available());
    for (std::size_t index = 0; index < count;) {
        const std::size_t place = (start + index) % m_samples.size();
        const std::size_t run = std::min(count - index, m_samples.size() - place);
        std::copy_n(samples.data() + index, run, m_samples.data() + place);
        index += run;
    }
    m_written.store(start + count, std::memory_order_release);
    return count;
}

std::size_t SampleRing::read(std::span<std::int16_t> into)
{
    const std::uint64_t start = m_taken.load(std::memory_order_relaxed);
    const std::size_t count = std::min(into.size(), available());
    for (std::size_t index = 0; index < count;) {
        const std::size_t place = (start + index) % m_samples.size();
        const std::size_t run = std::min(count - index, m_samples.size() - place);
        std::copy_n(m_samples.data() + place, run, into.data() + index);
        index += run;
    }
    m_taken.store(start + count, std::memory_order_release);
    return count;
}

void SampleRing::skip(std::size_t count)
{
    m_taken.store(m_taken.load(std::memory_order_relaxed) + std::min(count, available()), std::memory_order_release);
}

} // namespace quorvell
