// SPDX-License-Identifier: MIT
// Samples on their way from one thread to another, without locks and without memory of its own after the start.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace quorvell {

/// One thread writes and forgets, one other reads.
class CallSampleRing {
public:
    explicit CallSampleRing(std::size_t capacity);

    /// How many fitted.
    std::size_t write(std::span<const std::int16_t> samples);
    /// What was written so far and not read is skipped by the next read.
    void forget();
    /// How many there were.
    std::size_t read(std::span<std::int16_t> samples);
    /// Written and neither read nor forgotten; by the time it is known it may be less for the writer, more for the
    /// reader.
    std::size_t waiting() const;

private:
    std::size_t m_capacity;
    std::unique_ptr<std::int16_t[]> m_samples; ///< Costs no memory before it is written to.
    // Counted from the start, never wrapped: 64 bits last longer than any call.
    std::atomic<std::uint64_t> m_written{0};
    std::atomic<std::uint64_t> m_read{0};
    std::atomic<std::uint64_t> m_forgotten{0}; ///< Up to here.
};

} // namespace quorvell
