// SPDX-License-Identifier: MIT
// What one end of a call tells about itself, and how that reaches the main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quorvell {

/// Each may destroy the peer; nothing is reported after that.
struct WebRTCPeerReports {
    enum class State {
        connecting,
        connected,
        disconnected, ///< Nothing was heard for about 5 s; may come back.
        failed, ///< For good.
        closed, ///< By the other side, in an orderly way.
    };

    /// Runs a callback soon on the main thread, in order. Called from any thread.
    using Post = std::function<void(std::function<void()>)>;

    /// The offer, or the answer to the offer that was taken, addresses included. Once.
    std::function<void(const std::string& sdp)> descriptionReady{};
    std::function<void(State state)> stateChanged{};
    std::function<void()> channelOpened{};
    std::function<void(const std::string& text)> textReceived{};
    /// Some 20 ms of it, only while there is anything to hear, and `CallAudio::quietReported` beyond.
    std::function<void(const std::vector<std::uint8_t>& pcm)> soundReceived{};
    /// Nothing will come of this peer; `problem` says why, for a log. Once.
    std::function<void(const std::string& problem)> failed{};
};

} // namespace quorvell
