// SPDX-License-Identifier: MIT
// Has a Wyoming service write down what is said, one turn at a time.
#pragma once

#include "Wyoming/WyomingLine.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stop_token>
#include <string>

namespace quorvell {

/// Blocking only in finish; one thread. A service that failed is left alone for a while, so that a turn is not late
/// each time for one that is gone.
class WyomingRecogniser {
public:
    static constexpr int sampleRateHz = 16000;
    static constexpr std::chrono::milliseconds usualPatience{4'000}; ///< For the words, once the sound has ended.
    static constexpr std::chrono::seconds pause{30}; ///< After a failure.
    static constexpr std::size_t longestText = 4'000; ///< User-perceived characters; nobody says more in a turn.
    static constexpr int mostMessages = 100; ///< That are passed over while the words are waited for.

    explicit WyomingRecogniser(WyomingAddress address, std::chrono::milliseconds patience = usualPatience);

    void begin();
    void feed(std::span<const std::int16_t> samples);
    /// The words, perhaps none; nothing where the service failed, or is left alone, or `stop` was requested.
    std::optional<std::string> finish(const std::stop_token& stop = {});

    /// Whether the last turn failed, and is the first one that did.
    bool hasJustFailed() const { return m_hasJustFailed; }
    const WyomingAddress& address() const { return m_address; }

private:
    using Clock = std::chrono::steady_clock;

    std::optional<std::string> words(const std::stop_token& stop);

    WyomingAddress m_address;
    std::chrono::milliseconds m_patience;
    std::unique_ptr<WyomingLine> m_line; ///< Of the turn that is under way; none while the service is left alone.
    std::optional<Clock::time_point> m_failed; ///< When it last did; nothing once it worked again.
    bool m_hasJustFailed = false;
};

} // namespace quorvell
