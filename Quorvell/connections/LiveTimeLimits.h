#pragma once

#include <chrono>

namespace quorvell {

/// How long the other side of a live connection may take. Tests shorten them.
struct LiveTimeLimits {
    std::chrono::milliseconds toOpen{20'000};
    std::chrono::milliseconds toStart{20'000};
    std::chrono::milliseconds toClose{2'000};
    std::chrono::milliseconds betweenPings{10'000};
    std::chrono::milliseconds silence{
        25'000}; ///< In whole pings without any byte in between; then the connection is dead.

    /// Before a refused request for an answer is repeated the second time; doubled each further time.
    std::chrono::milliseconds firstCreatePause{200};

    bool operator==(const LiveTimeLimits&) const = default;
};

} // namespace quorvell
