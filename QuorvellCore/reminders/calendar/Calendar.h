// SPDX-License-Identifier: MIT
// The user's days: turns instants into local dates and back. Gregorian, in one time zone.
#pragma once

#include "QuorvellCore/text/Instant.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// A day of the user's calendar, without a time.
using LocalDay = std::chrono::local_days;

/// An instant as the user's clock shows it.
struct CalendarParts {
    int year = 0;
    int month = 0; ///< 1 to 12.
    int day = 0; ///< 1 to 31.
    int hour = 0;
    int minute = 0;
    int second = 0;
    int weekday = 0; ///< 1 = Sunday to 7 = Saturday.

    bool operator==(const CalendarParts&) const = default;
};

/// A value, cheap to copy; read it from any thread. Strict: a day that does not exist is never bent into another one.
/// Days are added by the calendar and keep the time of day, hours by elapsed time. A time that a clock change skips
/// moves forward by what was skipped; of a time that happens twice the first counts.
class Calendar {
public:
    using LocalTime = std::chrono::local_time<std::chrono::milliseconds>;

    /// Nothing for a zone that is not known. `zone` is an IANA name, `locale` a name such as "en_GB". `zoneFile` is
    /// what the computer's own time zone database holds for the zone, and as new as that is; without it ICU's rules
    /// count, which are as old as the library.
    static std::optional<Calendar> create(
        std::string_view zone, std::string_view locale, std::string_view zoneFile = {});

    const std::string& zone() const { return m_zone; }
    const std::string& locale() const { return m_locale; }

    LocalTime localTime(Instant instant) const;
    CalendarParts parts(Instant instant) const;
    LocalDay day(Instant instant) const;
    Instant instant(LocalDay day, std::chrono::milliseconds timeOfDay) const;
    Instant startOfDay(Instant instant) const;
    Instant addingDays(Instant instant, std::chrono::days count) const;
    bool isSameDay(Instant left, Instant right) const { return day(left) == day(right); }

    static std::optional<LocalDay> dayOf(int year, int month, int day);
    static int daysInMonth(int year, int month);
    static int weekday(LocalDay day); ///< 1 = Sunday to 7 = Saturday.

    bool operator==(const Calendar& other) const { return m_zone == other.m_zone && m_locale == other.m_locale; }

private:
    struct Zone;

    Calendar(std::shared_ptr<const Zone> rules, std::string_view zone, std::string_view locale);

    std::shared_ptr<const Zone> m_rules; ///< Shared by copies; never changes.
    std::string m_zone;
    std::string m_locale;
};

} // namespace quorvell
