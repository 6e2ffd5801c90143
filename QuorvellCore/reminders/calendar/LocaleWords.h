// SPDX-License-Identifier: MIT
// What the user's language and country call days and times. The dates are Gregorian in every locale.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <array>
#include <string>
#include <string_view>

namespace quorvell {

/// How a locale writes the time of day.
struct ClockStyle {
    bool isTwelveHour = true;
    bool marksComeFirst = false; ///< "오후 5:30" rather than "5:30 PM".
    std::string beforeNoon; ///< Empty marks where the clock has 24 hours.
    std::string afterNoon;
};

ClockStyle clockStyle(const std::string& locale);

/// Stand-alone names, Sunday first.
std::array<std::string, 7> weekdayNames(const std::string& locale);

/// `pattern` is a date pattern of Unicode's locale data ("EEEE d MMMM"), without a zone.
std::string formatted(Instant instant, std::string_view pattern, const Calendar& calendar, const std::string& locale);

} // namespace quorvell
