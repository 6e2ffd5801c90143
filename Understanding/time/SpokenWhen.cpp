// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenWhen.h"

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/text/Pattern.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace quorvell {

namespace {

constexpr std::array weekdayNames{"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::array monthNames{"January", "February", "March", "April", "May", "June", "July", "August", "September",
    "October", "November", "December"};

/// ICU writes a narrow space before AM and PM, which a voice may stumble over.
std::string withPlainSpaces(std::string_view text)
{
    static const Pattern narrow("[\\u00A0\\u202F]");
    return narrow.replaceAll(text, " ");
}

std::string twelveHourClock(int hour, int minute)
{
    char text[16];
    const int shown = hour % 12 == 0 ? 12 : hour % 12;
    if (minute == 0)
        std::snprintf(text, sizeof text, "%d", shown);
    else
        std::snprintf(text, sizeof text, "%d:%02d", shown, minute);
    return text;
}

/// " at 17:00" as the clock of all other replies has it.
std::string withSpokenClock(const std::string& rest)
{
    static const Pattern clock("^ at (\\d\\d):(\\d\\d)$");
    const auto match = clock.find(rest);
    if (!match)
        return rest;
    const int hour = std::atoi(match->texts[0].c_str());
    return " at " + twelveHourClock(hour, std::atoi(match->texts[1].c_str())) + (hour < 12 ? " AM" : " PM");
}

const char* partOfDay(int hour)
{
    if (hour < 12)
        return " in the morning";
    if (hour < 18)
        return " in the afternoon";
    return hour < 21 ? " in the evening" : " at night";
}

} // namespace

std::string SpokenWhen::words(std::string_view when)
{
    static const Pattern form("^([A-Z][a-z]+day),? (\\d{1,2}) ([A-Z][a-z]+)(.*)$");
    const std::string plain = withPlainSpaces(when);
    const auto match = form.find(plain);
    if (!match)
        return plain;
    const auto& part = match->texts;
    const int day = std::atoi(part[1].c_str());
    return part[0] + " the " + ReminderWords::ordinal(day) + " of " + part[2] + withSpokenClock(part[3]);
}

std::string SpokenWhen::on(std::string_view when)
{
    static const Pattern weekday("^[A-Z][a-z]+day\\b(?<!Today)");
    const std::string text = words(when);
    return weekday.find(text) ? "on " + text : text;
}

std::string SpokenWhen::date(const DateParts& parts)
{
    const auto day = Calendar::dayOf(parts.year, parts.month, parts.day);
    if (!day)
        return {};
    std::string result = std::string(weekdayNames[static_cast<std::size_t>(Calendar::weekday(*day) - 1)]) + " the "
        + ReminderWords::ordinal(parts.day) + " of " + monthNames[static_cast<std::size_t>(parts.month - 1)];
    const std::string time = clock(parts);
    return time.empty() ? result : result + " at " + time;
}

std::string SpokenWhen::dateSeenFrom(const DateParts& parts, const LocalTime& around)
{
    const bool isThisYear = parts.year == around.calendar.parts(around.now).year;
    const std::string day = date(parts.wholeDay()) + (isThisYear ? "" : " " + std::to_string(parts.year));
    const std::string time = clock(parts);
    return time.empty() ? day : day + " at " + time;
}

std::string SpokenWhen::clock(const DateParts& parts)
{
    if (parts.allDay)
        return {};
    return twelveHourClock(parts.hour, parts.minute) + (parts.hour < 12 ? " AM" : " PM");
}

std::string SpokenWhen::timeOfDay(const DateParts& parts)
{
    if (parts.allDay)
        return {};
    return twelveHourClock(parts.hour, parts.minute) + partOfDay(parts.hour);
}

} // namespace quorvell
