// SPDX-License-Identifier: MIT
// Recognition and voice as one session uses them.
#pragma once

#include "LiveService/conversation/HeardTurn.h"

#include <cstdint>
#include <functional>
#include <span>
#include <stop_token>
#include <string_view>

namespace quorvell {

/// Made, used and destroyed on one worker thread; everything blocks.
class SpeechPort {
public:
    static constexpr int sampleRateHz = 16000; ///< In and out, mono.
    using Sink = std::function<void(std::span<const std::int16_t>)>;

    virtual ~SpeechPort() = default;

    /// A turn is likely to come: loads what recognition needs, where that is still to be done.
    virtual void expectSpeech() = 0;
    /// Starts a new turn; what was fed to an unfinished one is forgotten.
    virtual void begin() = 0;
    virtual void feed(std::span<const std::int16_t> samples) = 0;
    /// The words of the turn so far, in written form; empty where they are not known yet. Quick.
    virtual std::string heardSoFar() { return {}; }
    /// The turn has probably ended: what finish needs may be worked out ahead. More may be fed all the same.
    virtual void expectEnd() { }
    virtual HeardTurn finish() = 0;
    /// Hands pieces to `sink` while the rest is still being made, until done or `stop` is requested.
    /// The default voice stands in for a name that is not known.
    virtual void speak(std::string_view voice, std::string_view text, const Sink& sink, std::stop_token stop) = 0;
};

} // namespace quorvell
