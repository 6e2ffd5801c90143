// SPDX-License-Identifier: MIT
// Where the assistant's voice goes: a loudspeaker, a recording, nowhere.
#pragma once

#include <chrono>
#include <cstdint>
#include <span>

namespace quorvell {

/// Main thread.
class AudioPlayer {
public:
    virtual ~AudioPlayer() = default;

    /// 16-bit little-endian mono at the session's rate. Queued behind what was given before.
    virtual void play(std::span<const std::uint8_t> pcm) = 0;
    /// Forgets what was not played yet.
    virtual void stop() = 0;
    /// How long what was given so far will go on sounding.
    virtual std::chrono::milliseconds unplayed() const = 0;
    /// How much of all that was ever given has really sounded; what `stop` forgot is not in it. Never goes back.
    virtual std::chrono::milliseconds played() const = 0;
};

} // namespace quorvell
