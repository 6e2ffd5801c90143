// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/ReminderWords.h"

#include "QuorvellCore/reminders/calendar/LocaleWords.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace quorvell {

namespace {

std::string clockText(const char* form, int hour, int minute)
{
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), form, hour, minute);
    return buffer.data();
}

/// Mornings end at noon, afternoons at 17:00.
std::string partOfToday(int hour)
{
    if (hour < 12)
        return "This morning";
    return hour < 17 ? "This afternoon" : "This evening";
}

} // namespace

std::string ReminderWords::spoken(Instant date, Instant, const Calendar& calendar, const std::string& locale)
{
    return formatted(date, "EEEE d MMMM", calendar, locale) + " at " + clock(date, calendar, locale);
}

std::string ReminderWords::spokenWithYear(
    Instant date, Instant now, const Calendar& calendar, const std::string& locale)
{
    if (calendar.parts(date).year == calendar.parts(now).year)
        return spoken(date, now, calendar, locale);
    return formatted(date, "EEEE d MMMM y", calendar, locale) + " at " + clock(date, calendar, locale);
}

std::string ReminderWords::full(
    Instant date, Time time, Instant now, const Calendar& calendar, const std::string& locale)
{
    const std::string day = calendar.isSameDay(date, now) ? "Today" : formatted(date, "EEEE d MMM", calendar, locale);
    return time == Time::isKnown ? day + ", " + clock(date, calendar, locale) : day;
}

std::string ReminderWords::short_(Instant date, Instant now, const Calendar& calendar, const std::string& locale)
{
    const std::string time = clock(date, calendar, locale);
    return calendar.isSameDay(date, now) ? time : formatted(date, "EEE d MMM", calendar, locale) + ", " + time;
}

std::string ReminderWords::choice(Instant date, Instant now, const Calendar& calendar, const std::string& locale)
{
    const std::string day = calendar.isSameDay(date, now) ? partOfToday(calendar.parts(date).hour)
                                                          : formatted(date, "EEE d MMM", calendar, locale);
    return day + ", " + clock(date, calendar, locale);
}

std::string ReminderWords::clock(Instant date, const Calendar& calendar, const std::string& locale)
{
    const CalendarParts parts = calendar.parts(date);
    const ClockStyle style = clockStyle(locale);
    if (!style.isTwelveHour)
        return clockText("%02d:%02d", parts.hour, parts.minute);
    const int hour = (parts.hour + 11) % 12 + 1;
    const std::string time = clockText(parts.minute == 0 ? "%d" : "%d:%02d", hour, parts.minute);
    return time + " " + (parts.hour < 12 ? style.beforeNoon : style.afterNoon);
}

std::string ReminderWords::ordinal(int number)
{
    constexpr std::array<const char*, 10> suffixes{"th", "st", "nd", "rd", "th", "th", "th", "th", "th", "th"};
    const int lastTwo = std::abs(number % 100);
    const bool isTeen = lastTwo >= 11 && lastTwo <= 13;
    return std::to_string(number) + (isTeen ? "th" : suffixes[static_cast<std::size_t>(lastTwo % 10)]);
}

} // namespace quorvell
