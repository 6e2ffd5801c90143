// SPDX-License-Identifier: MIT
// How far a playback stream is, as the server last told.
#pragma once

#include <chrono>
#include <cstdint>

namespace quorvell {

/// A value.
struct PlaybackTiming {
    std::int64_t queuedSamples = 0; ///< Given to the server and not yet to the device.
    std::chrono::microseconds deviceQueue{}; ///< How long the device takes until a sample given to it is heard.
    bool isPlaying = false; ///< The queue had something to give.
    std::chrono::microseconds silence{}; ///< Given to the device since the queue ran dry; only when it did.
    std::chrono::microseconds age{}; ///< Time since the server told this.

    /// How many of the samples given to the server are not heard yet: 0 to `given`.
    std::int64_t unplayed(std::int64_t given, int sampleRateHz) const;

    bool operator==(const PlaybackTiming&) const = default;
};

} // namespace quorvell
