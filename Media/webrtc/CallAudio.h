// SPDX-License-Identifier: MIT
// The sound of one call, 10 ms at a time, between the clock that drives the call and the rest of the program.
#pragma once

#include "Media/audio/SampleRing.h"
#include "Media/webrtc/WebRTCPeerOptions.h"

#include <semaphore.h>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <thread>
#include <vector>

namespace quorvell {

/// `frameToSend` and `frameHeard` belong to the call's clock: they neither wait nor ask for memory. What was heard is
/// handed on from a thread of its own.
class CallAudio {
public:
    static constexpr std::chrono::milliseconds frameLength{10};
    static constexpr std::size_t frameSamples = 240; ///< At 24000 Hz.
    using Frame = std::array<std::int16_t, frameSamples>;
    using Heard = std::function<void(std::vector<std::uint8_t> pcm)>;

    CallAudio(const WebRTCPeerOptions& options, Heard heard);
    ~CallAudio();
    CallAudio(const CallAudio&) = delete;
    CallAudio& operator=(const CallAudio&) = delete;

    // Main thread
    bool send(std::span<const std::uint8_t> pcm);
    void dropUnsent() { m_outgoing.forget(); }
    std::size_t unsentSamples() const { return m_outgoing.waiting(); }

    // The call's clock
    void frameToSend(Frame& frame); ///< Silence when nothing waits.
    void frameHeard(const Frame& frame);

private:
    void learnRoom(std::span<const std::int16_t> samples);
    void handOn();

    WebRTCPeerOptions::Backlog m_backlog;
    int m_hangOverFrames;
    Heard m_heard;
    std::deque<int> m_peaks; ///< Of the last frames that were given to be sent. Main thread.
    std::atomic<int> m_quiet; ///< A frame whose peak is lower may be left out.
    SampleRing m_outgoing;
    SampleRing m_incoming;
    int m_framesToReport = 0; ///< Of the hang-over.
    int m_framesUnreported = 0;
    std::atomic<bool> m_isOver{false};
    sem_t m_somethingHeard; ///< Counts reports; posting it never waits.
    std::thread m_reporter;
};

} // namespace quorvell
