// SPDX-License-Identifier: MIT
// The part of every day in which the user may have something planned, by their clock.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct WakingHours {
    std::chrono::minutes from{std::chrono::hours(8)}; ///< Since midnight, before 24:00.
    std::chrono::minutes to{std::chrono::hours(22)}; ///< After `from`, at most a day; beyond 24:00 the night after.

    /// "8-22", "7:30-23:15", or "10:00-02:00" of somebody who stays up. Nothing for anything else.
    static std::optional<WakingHours> parse(std::string_view text);

    std::chrono::minutes length() const { return to - from; }
    std::string text() const; ///< "8:00 to 22:00"

    bool operator==(const WakingHours&) const = default;
};

} // namespace quorvell
