// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include "QuorvellCore/reminders/calendar/ZoneTable.h"

#include <unicode/basictz.h>
#include <unicode/timezone.h>

namespace quorvell {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::milliseconds;
using std::chrono::year_month_day;

struct Calendar::Zone {
    std::optional<ZoneTable> table;
    std::unique_ptr<const icu::BasicTimeZone> rules; ///< Without a table.

    milliseconds offsetAt(Instant instant) const
    {
        if (table)
            return table->offsetAt(floor<std::chrono::seconds>(instant));
        std::int32_t raw = 0;
        std::int32_t saving = 0;
        UErrorCode status = U_ZERO_ERROR;
        rules->getOffset(static_cast<double>(instant.time_since_epoch().count()), false, raw, saving, status);
        return milliseconds(raw + saving);
    }

    /// The offset before a clock change for times that it skips or repeats.
    milliseconds offsetAtLocal(LocalTime time) const
    {
        if (table)
            return table->offsetAtLocal(floor<std::chrono::seconds>(time));
        std::int32_t raw = 0;
        std::int32_t saving = 0;
        UErrorCode status = U_ZERO_ERROR;
        rules->getOffsetFromLocal(static_cast<double>(time.time_since_epoch().count()), UCAL_TZ_LOCAL_FORMER,
            UCAL_TZ_LOCAL_FORMER, raw, saving, status);
        return milliseconds(raw + saving);
    }
};

Calendar::Calendar(std::shared_ptr<const Zone> rules, std::string_view zone, std::string_view locale)
    : m_rules(std::move(rules))
    , m_zone(zone)
    , m_locale(locale)
{
}

std::optional<Calendar> Calendar::create(std::string_view zone, std::string_view locale, std::string_view zoneFile)
{
    constexpr std::size_t longestName = 64;
    if (zone.empty() || zone.size() > longestName)
        return std::nullopt;
    auto shared = std::make_shared<Zone>();
    shared->table = ZoneTable::parse(zoneFile);
    if (shared->table)
        return Calendar(std::move(shared), zone, locale);
    const icu::StringPiece name(zone.data(), static_cast<std::int32_t>(zone.size()));
    std::unique_ptr<icu::TimeZone> found(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(name)));
    auto* rules = dynamic_cast<icu::BasicTimeZone*>(found.get());
    if (!rules || *found == icu::TimeZone::getUnknown())
        return std::nullopt;
    found.release();
    shared->rules.reset(rules);
    return Calendar(std::move(shared), zone, locale);
}

Calendar::LocalTime Calendar::localTime(Instant instant) const
{
    return LocalTime((instant + m_rules->offsetAt(instant)).time_since_epoch());
}

CalendarParts Calendar::parts(Instant instant) const
{
    const LocalTime time = localTime(instant);
    const LocalDay today = floor<days>(time);
    const year_month_day date(today);
    const std::chrono::hh_mm_ss clock(time - today);
    CalendarParts parts;
    parts.year = static_cast<int>(date.year());
    parts.month = static_cast<int>(static_cast<unsigned>(date.month()));
    parts.day = static_cast<int>(static_cast<unsigned>(date.day()));
    parts.hour = static_cast<int>(clock.hours().count());
    parts.minute = static_cast<int>(clock.minutes().count());
    parts.second = static_cast<int>(clock.seconds().count());
    parts.weekday = weekday(today);
    return parts;
}

LocalDay Calendar::day(Instant instant) const
{
    return floor<days>(localTime(instant));
}

Instant Calendar::instant(LocalDay day, milliseconds timeOfDay) const
{
    const LocalTime time = day + timeOfDay;
    return Instant(time.time_since_epoch()) - m_rules->offsetAtLocal(time);
}

Instant Calendar::startOfDay(Instant instant) const
{
    return this->instant(day(instant), milliseconds(0));
}

Instant Calendar::addingDays(Instant instant, days count) const
{
    const LocalTime time = localTime(instant);
    const LocalDay today = floor<days>(time);
    return count == days(0) ? instant : this->instant(today + count, time - today);
}

std::optional<LocalDay> Calendar::dayOf(int year, int month, int day)
{
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month))
        return std::nullopt;
    return LocalDay(std::chrono::year(year) / month / day);
}

int Calendar::daysInMonth(int year, int month)
{
    const auto last = std::chrono::year(year) / month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

int Calendar::weekday(LocalDay day)
{
    return static_cast<int>(std::chrono::weekday(day).c_encoding()) + 1;
}

} // namespace quorvell
