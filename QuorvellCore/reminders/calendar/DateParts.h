// SPDX-License-Identifier: MIT
// The form in which dates cross the border to the model: what the user's clock shows, without a zone.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct DateParts {
    int year = 2000;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    bool allDay = false; ///< Only a day was named; hour and minute are 0.

    /// "2026-11-22 17:00", "2026-11-22T17:00" or "2026-11-22". The years 2000 to 2100; days are checked only up to 31.
    static std::optional<DateParts> parse(std::string_view text);

    static DateParts from(Instant instant, const Calendar& calendar);
    static DateParts fromDay(Instant instant, const Calendar& calendar);

    /// Arithmetic on the clock face: no daylight-saving change shifts it.
    DateParts adding(std::int64_t minutes) const;

    DateParts wholeDay() const { return {year, month, day, 0, 0, true}; }

    /// Nothing for a day that does not exist. A whole day gives its start.
    std::optional<Instant> instant(const Calendar& calendar) const;

    /// "2026-11-22 17:00", for a whole day "2026-11-22".
    std::string text() const;

    /// A whole day comes behind its first minute.
    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 takes the comparison with 0 for one with a pointer.
    auto operator<=>(const DateParts&) const = default;
};

} // namespace quorvell
