// SPDX-License-Identifier: MIT
// How long the other side of a live connection may take.
#pragma once

#include <chrono>

namespace quorvell {

/// Tests shorten them.
struct LiveTimeLimits {
    std::chrono::milliseconds toOpen{20'000};
    std::chrono::milliseconds toConnectMedia{4'000}; ///< From the answer to the first word over WebRTC.
    std::chrono::milliseconds toStart{20'000};
    /// For the answer to a good-bye, which changes nothing any more: whoever leaves waits for it.
    std::chrono::milliseconds toClose{500};
    std::chrono::milliseconds betweenPings{5'000};
    /// In whole pings without any byte in between; then the connection is dead.
    std::chrono::milliseconds silence{15'000};

    /// Over WebRTC, after the library itself has waited some 5 s.
    std::chrono::milliseconds disconnection{5'000};
    /// Without a word of an answer that has begun or was asked for; then messages need not wait for its end.
    std::chrono::milliseconds quietTurn{20'000};
    /// Without any word though one is owed, or within an answer; then the service is asked whether it is there.
    std::chrono::milliseconds owedWord{8'000};
    std::chrono::milliseconds toSayItIsThere{4'000};
    /// Between two pieces of an answer that comes in a stream.
    std::chrono::milliseconds streamSilence{120'000};

    /// Before a refused request for an answer is repeated the second time; doubled each further time.
    std::chrono::milliseconds firstCreatePause{200};

    bool operator==(const LiveTimeLimits&) const = default;
};

} // namespace quorvell
