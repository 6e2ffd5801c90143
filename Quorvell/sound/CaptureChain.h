// SPDX-License-Identifier: MIT
// From the sound thread's pieces to clean chunks, on a thread of its own: cleaning takes longer than the sound thread
// may be held up.
#pragma once

#include "Media/audio/EchoReference.h"
#include "Media/audio/SampleRing.h"
#include "QuorvellCore/text/Bytes.h"

#include <semaphore.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <thread>

namespace quorvell {

class CaptureChain {
public:
    static constexpr std::size_t chunkSamples = 960; ///< 40 ms: what the session's gate decides about at once.
    static constexpr std::size_t longestBacklog = 24000; ///< A second; what comes while it is full is lost.

    struct Chunk {
        Bytes pcm; ///< 16-bit little-endian.
        bool isOnlyRoom = false; ///< Nobody has spoken and nothing has been played for a while.
    };

    /// `chunkReady` runs on the chain's thread.
    CaptureChain(EchoReference& reference, std::function<void(Chunk)> chunkReady);
    ~CaptureChain();
    CaptureChain(const CaptureChain&) = delete;
    CaptureChain& operator=(const CaptureChain&) = delete;

    /// The sound thread's. Neither waits nor allocates.
    void captured(std::span<const std::int16_t> samples);
    /// Main thread, while nothing is captured: what was captured before is forgotten.
    void restart();

private:
    void run(const std::stop_token& stop);

    EchoReference& m_reference;
    std::function<void(Chunk)> m_chunkReady;
    SampleRing m_ring{longestBacklog};
    std::atomic<bool> m_isRestarted{false};
    sem_t m_wake{};
    std::jthread m_thread; ///< Last, so that it ends before what it uses.
};

} // namespace quorvell
