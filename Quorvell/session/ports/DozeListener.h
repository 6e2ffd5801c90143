// SPDX-License-Identifier: MIT
// Listens on the device while the live connection is closed.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace quorvell {

/// Main thread; reports come there too, never from inside a call, and none after `stop`.
class DozeListener {
public:
    struct Reports {
        std::function<void()> onset; ///< Somebody began to speak; words may follow.
        std::function<void(const std::string& words)> heard; ///< One utterance in words; never empty.
        std::function<void(const std::string& sentence)> failed; ///< It cannot listen; for the user, what to do.
    };

    virtual ~DozeListener() = default;

    virtual void start(Reports reports) = 0;
    /// 16-bit little-endian mono at MicrophoneStream::sampleRateHz, in pieces of any size.
    virtual void captured(std::span<const std::uint8_t> pcm) = 0;
    virtual void stop() = 0;
};

} // namespace quorvell
