// SPDX-License-Identifier: MIT
#include "Quorvell/sound/CaptureChain.h"

#include "Media/audio/SampleBytes.h"
#include "Quorvell/sound/CaptureCleaner.h"

#include <pthread.h>

#include <array>
#include <utility>

namespace quorvell {

CaptureChain::CaptureChain(EchoReference& reference, std::function<void(Chunk)> chunkReady)
    : m_reference(reference)
    , m_chunkReady(std::move(chunkReady))
{
    sem_init(&m_wake, 0, 0);
    m_thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

CaptureChain::~CaptureChain()
{
    m_thread.request_stop();
    sem_post(&m_wake);
    m_thread.join();
    sem_destroy(&m_wake);
}

/// Wakes the chain once a chunk, since it can do nothing with less.
void CaptureChain::captured(std::span<const std::int16_t> samples)
{
    m_ring.write(samples);
    if (m_ring.waiting() >= chunkSamples)
        sem_post(&m_wake);
}

void CaptureChain::restart()
{
    m_isRestarted.store(true, std::memory_order_release);
    sem_post(&m_wake);
}

void CaptureChain::run(const std::stop_token& stop)
{
    pthread_setname_np(pthread_self(), "microphone");
    CaptureCleaner cleaner(m_reference);
    std::array<std::int16_t, chunkSamples> chunk;
    while (sem_wait(&m_wake) != 0 || !stop.stop_requested()) {
        if (m_isRestarted.exchange(false, std::memory_order_acq_rel)) {
            m_ring.skip(m_ring.waiting());
            cleaner.restart();
        }
        while (m_ring.waiting() >= chunkSamples) {
            m_ring.read(chunk);
            cleaner.clean(chunk);
            const auto bytes = bytesOfSamples(chunk);
            m_chunkReady({Bytes(bytes.begin(), bytes.end()), cleaner.isResting()});
        }
    }
}

} // namespace quorvell
