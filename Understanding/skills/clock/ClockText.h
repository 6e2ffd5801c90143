// SPDX-License-Identifier: MIT
// Days, hours and stretches of time as the clock tells them. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ClockText {
    /// "Friday the 25th of December"; with the year where that is not the one of `today`.
    static std::string day(std::chrono::sys_days day, std::chrono::sys_days today);
    static std::string weekday(std::chrono::sys_days day);
    /// "5 PM", by the user's locale.
    static std::string clock(Instant moment, const Calendar& there, const LocalTime& around);
    /// "34 days", "1 day"
    static std::string count(std::int64_t number, std::string_view unit);
    /// "2 hours and 5 minutes"; below a minute "less than a minute".
    static std::string length(std::chrono::minutes length);
    /// "a, b and c"
    static std::string list(const std::vector<std::string>& parts);
    static std::chrono::sys_days today(const LocalTime& around);
};

} // namespace quorvell
