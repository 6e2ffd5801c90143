// SPDX-License-Identifier: MIT
// How long a timer is to run, to the second, taken out of the words.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// "10 minutes", "an hour and a half", "2 hours and 30 minutes", "90 secs", "half an hour", "ten-minute", "5m".
struct TimerLength {
    std::chrono::seconds length{0};
    std::string rest{}; ///< The words without it.

    /// The first one in the words; nothing where there is none, and for one of more than a week.
    static std::optional<TimerLength> read(std::string_view words);
    /// "1 hour, 5 minutes and 20 seconds".
    static std::string spoken(std::chrono::seconds length);

    bool operator==(const TimerLength&) const = default;
};

} // namespace quorvell
