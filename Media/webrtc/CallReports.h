// SPDX-License-Identifier: MIT
// Carries reports from the library's threads to the main thread.
#pragma once

#include "Media/webrtc/WebRTCPeerOptions.h"
#include "Media/webrtc/WebRTCPeerReports.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvell {

/// What arrives after the peer is gone is dropped, and so is what the main thread does not come to take.
class CallReports : public std::enable_shared_from_this<CallReports> {
public:
    static constexpr std::size_t mostWaitingText = 32 * 1024 * 1024;
    static constexpr std::size_t mostWaitingSound = 30 * WebRTCPeerOptions::sampleRate * 2; ///< Half a minute.

    CallReports(WebRTCPeerReports reports, WebRTCPeerReports::Post post);

    // From any thread
    void descriptionReady(std::string sdp);
    void stateChanged(WebRTCPeerReports::State state);
    void channelOpened();
    void textReceived(std::string text);
    void soundReceived(std::vector<std::uint8_t> pcm);
    void failed(std::string problem);

    /// Main thread: nothing is reported any more.
    void end() { m_isOver = true; }

private:
    void post(std::function<void()> report);
    bool claim(std::atomic<std::size_t>& waiting, std::size_t size, std::size_t most);

    WebRTCPeerReports m_reports; ///< Stays as it is.
    WebRTCPeerReports::Post m_post;
    std::atomic<std::size_t> m_waitingText{0}; ///< Bytes posted and not yet reported.
    std::atomic<std::size_t> m_waitingSound{0};
    bool m_isOver = false; ///< Main thread.
    bool m_hasFailed = false; ///< Main thread.
};

} // namespace quorvell
