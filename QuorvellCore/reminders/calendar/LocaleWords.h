// SPDX-License-Identifier: MIT
// What days and times are called, and how the user's country writes the time of day. The program speaks English
// everywhere, so the names are the English ones; the dates are Gregorian in every locale.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <array>
#include <string>
#include <string_view>

namespace quorvell {

/// How a locale writes the time of day.
struct ClockStyle {
    bool isTwelveHour = true;
    std::string beforeNoon; ///< "am" where that is how the country's own English writes it.
    std::string afterNoon;
};

ClockStyle clockStyle(const std::string& locale);

/// Stand-alone names, Sunday first.
std::array<std::string, 7> weekdayNames(const std::string& locale);

/// In the country's English, or American English. `pattern` is a date pattern of Unicode's locale data ("EEEE d MMMM"),
/// without a zone.
std::string formatted(Instant instant, std::string_view pattern, const Calendar& calendar, const std::string& locale);

} // namespace quorvell
