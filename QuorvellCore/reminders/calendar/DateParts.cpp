// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/DateParts.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quorvell {

namespace {

const Pattern& form()
{
    static const Pattern pattern(R"(^\s*(\d{4})-(\d{1,2})-(\d{1,2})(?:[ T](\d{1,2}):(\d{2}))?\s*$)");
    return pattern;
}

bool isBetween(int value, int first, int last)
{
    return value >= first && value <= last;
}

DateParts fromLocal(std::chrono::local_time<std::chrono::minutes> time)
{
    const LocalDay date = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day day(date);
    const std::chrono::hh_mm_ss clock(time - date);
    DateParts parts;
    parts.year = static_cast<int>(day.year());
    parts.month = static_cast<int>(static_cast<unsigned>(day.month()));
    parts.day = static_cast<int>(static_cast<unsigned>(day.day()));
    parts.hour = static_cast<int>(clock.hours().count());
    parts.minute = static_cast<int>(clock.minutes().count());
    return parts;
}

} // namespace

std::optional<DateParts> DateParts::parse(std::string_view text)
{
    constexpr std::size_t longestText = 256; // Much white space around a date is no date.
    const auto match = text.size() <= longestText ? form().find(text) : std::nullopt;
    if (!match)
        return std::nullopt;
    DateParts parts;
    parts.year = decimalNumber(match->texts[0]).value_or(0);
    parts.month = decimalNumber(match->texts[1]).value_or(0);
    parts.day = decimalNumber(match->texts[2]).value_or(0);
    parts.allDay = !match->groups[3].has_value();
    if (!parts.allDay) {
        parts.hour = decimalNumber(match->texts[3]).value_or(-1);
        parts.minute = decimalNumber(match->texts[4]).value_or(-1);
    }
    const bool isInRange = isBetween(parts.year, 2000, 2100) && isBetween(parts.month, 1, 12)
        && isBetween(parts.day, 1, 31) && isBetween(parts.hour, 0, 23) && isBetween(parts.minute, 0, 59);
    return isInRange ? std::optional(parts) : std::nullopt;
}

DateParts DateParts::from(Instant instant, const Calendar& calendar)
{
    const CalendarParts local = calendar.parts(instant);
    return {local.year, local.month, local.day, local.hour, local.minute, false};
}

DateParts DateParts::fromDay(Instant instant, const Calendar& calendar)
{
    const CalendarParts local = calendar.parts(instant);
    return {local.year, local.month, local.day, 0, 0, true};
}

DateParts DateParts::adding(std::int64_t minutes) const
{
    // A month or a day outside its range counts on from the one before, as on a lenient calendar. The bounds keep
    // the sum inside the years that a date can name.
    constexpr std::int64_t thousandYears = std::int64_t{366} * 1000 * 24 * 60;
    const int months = std::clamp(month - 1, -1200, 1200);
    const auto firstOfMonth =
        std::chrono::year(std::clamp(year, -9999, 9999)) / std::chrono::January / 1 + std::chrono::months(months);
    const auto start = LocalDay(firstOfMonth) + std::chrono::days(std::clamp(day - 1, -36500, 36500));
    const auto added = std::chrono::minutes(std::clamp(minutes, -thousandYears, thousandYears));
    DateParts sum = fromLocal(start + std::chrono::hours(std::clamp(hour, -876000, 876000))
        + std::chrono::minutes(std::clamp<std::int64_t>(minute, -thousandYears, thousandYears)) + added);
    sum.allDay = allDay;
    return sum;
}

std::optional<Instant> DateParts::instant(const Calendar& calendar) const
{
    const auto date = Calendar::dayOf(year, month, day);
    if (!date || !isBetween(hour, 0, 23) || !isBetween(minute, 0, 59))
        return std::nullopt;
    return calendar.instant(*date, std::chrono::hours(hour) + std::chrono::minutes(minute));
}

std::string DateParts::text() const
{
    std::array<char, 96> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02d-%02d", year, month, day);
    std::string text = buffer.data();
    if (allDay)
        return text;
    std::snprintf(buffer.data(), buffer.size(), " %02d:%02d", hour, minute);
    return text + buffer.data();
}

} // namespace quorvell
