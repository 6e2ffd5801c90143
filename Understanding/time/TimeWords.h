// SPDX-License-Identifier: MIT
// Where in a request the words of its time stand. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// A time at one end of some words, and the others.
struct TimeWords {
    std::string time; ///< "tomorrow at 5", without "to" or "until" before it; "at 3" for a bare "3".
    std::string rest;
    bool isBy = false; ///< "by an hour": how far, not until when.

    /// Whether the words are a time or a length of time and nothing else. Repetitions are none.
    static bool isTime(std::string_view words, const LocalTime& around);
    /// "a day", "two weeks", and nothing else.
    static std::optional<int> daysIn(std::string_view words);
    /// "lunch with Ana to saturday at 2"; the longest time wins.
    static std::optional<TimeWords> atEnd(std::string_view words, const LocalTime& around);
    /// "tomorrow at 5 remind me to eat"
    static std::optional<TimeWords> atStart(std::string_view words, const LocalTime& around);

    bool operator==(const TimeWords&) const = default;
};

} // namespace quorvell
