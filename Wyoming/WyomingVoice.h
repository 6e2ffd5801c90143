// SPDX-License-Identifier: MIT
// Has a Wyoming service speak a sentence.
#pragma once

#include "Wyoming/WyomingLine.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>

namespace quorvell {

/// Blocking; one thread. As WyomingRecogniser it leaves a service alone that failed.
class WyomingVoice {
public:
    /// One channel of samples at that rate.
    using Sink = std::function<void(std::span<const std::int16_t>, int rateHz)>;

    static constexpr std::chrono::milliseconds usualPatience{2'000}; ///< For the first sound, and between two pieces.
    static constexpr std::chrono::seconds pause{30}; ///< After a failure.
    static constexpr std::chrono::seconds longest{120}; ///< Of sound for one sentence.

    enum class Verdict { spoken, failed, stopped };

    explicit WyomingVoice(WyomingAddress address, std::chrono::milliseconds patience = usualPatience);

    /// `failed` also where the service is left alone, and where it broke off in the middle.
    [[nodiscard]] Verdict speak(std::string_view text, const Sink& sink, const std::stop_token& stop);

    /// Whether the last sentence failed, and is the first one that did.
    bool hasJustFailed() const { return m_hasJustFailed; }
    const WyomingAddress& address() const { return m_address; }

private:
    using Clock = std::chrono::steady_clock;

    WyomingAddress m_address;
    std::chrono::milliseconds m_patience;
    std::optional<Clock::time_point> m_failed; ///< When it last did; nothing once it worked again.
    bool m_hasJustFailed = false;
};

} // namespace quorvell
