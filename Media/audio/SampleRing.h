// SPDX-License-Identifier: MIT
// Samples from one thread to one other, in order, without locks and without allocating once it is made.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace quorvell {

/// One thread writes and forgets, one other reads and skips.
class SampleRing {
public:
    explicit SampleRing(std::size_t capacity);

    /// The writer's. How many samples fitted; the rest is lost.
    std::size_t write(std::span<const std::int16_t> samples);
    /// The writer's: what it wrote so far and was not read will not be. It keeps its place until the reader comes by.
    void forget();

    /// The reader's. How many samples there were.
    std::size_t read(std::span<std::int16_t> into);
    /// The reader's.
    void skip(std::size_t count);

    /// Written, and neither read nor forgotten. Any thread's: by the time it is known it may be less for the writer,
    /// more for the reader.
    std::size_t waiting() const;

private:
    std::uint64_t next() const;

    std::size_t m_capacity;
    std::unique_ptr<std::int16_t[]> m_samples; ///< Costs no memory before it is written to.
    // Counted from the first sample on, never wrapped: 64 bits last longer than any stream.
    std::atomic<std::uint64_t> m_written{0};
    std::atomic<std::uint64_t> m_taken{0};
    std::atomic<std::uint64_t> m_forgotten{0}; ///< Up to here.
};

} // namespace quorvell
