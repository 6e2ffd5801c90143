// SPDX-License-Identifier: MIT
// Samples from one thread to one other, in order, without locks and without allocating once it is made.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quorvell {

class SampleRing {
public:
    explicit SampleRing(std::size_t capacity)
        : m_samples(capacity)
    {
    }

    /// The writer's. How many samples fitted; the rest is lost.
    std::size_t write(std::span<const std::int16_t> samples);
    /// The writer's: how many samples it wrote so far.
    std::uint64_t written() const { return m_written.load(std::memory_order_relaxed); }

    /// Either thread's; to the other one it may have changed already.
    std::size_t available() const;
    /// The reader's: how many samples it took so far.
    std::uint64_t taken() const { return m_taken.load(std::memory_order_relaxed); }
    /// The reader's. How many samples there were.
    std::size_t read(std::span<std::int16_t> into);
    /// The reader's.
    void skip(std::size_t count);

private:
    std::vector<std::int16_t> m_samples;
    std::atomic<std::uint64_t> m_written{0};
    std::atomic<std::uint64_t> m_taken{0};
};

} // namespace quorvell
