// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/ClockText.h"

#include "QuorvellCore/reminders/calendar/ReminderWords.h"

#include <array>

namespace quorvell {

namespace {

constexpr std::array weekdayNames{"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::array monthNames{"January", "February", "March", "April", "May", "June", "July", "August", "September",
    "October", "November", "December"};

} // namespace

std::string ClockText::weekday(std::chrono::sys_days day)
{
    return weekdayNames[std::chrono::weekday(day).c_encoding()];
}

std::string ClockText::day(std::chrono::sys_days day, std::chrono::sys_days today)
{
    const std::chrono::year_month_day date(day);
    const int number = static_cast<int>(static_cast<unsigned>(date.day()));
    const bool isThisYear = std::chrono::year_month_day(today).year() == date.year();
    return weekday(day) + " the " + ReminderWords::ordinal(number) + " of "
        + monthNames[static_cast<unsigned>(date.month()) - 1]
        + (isThisYear ? "" : " " + std::to_string(static_cast<int>(date.year())));
}

std::string ClockText::clock(Instant moment, const Calendar& there, const LocalTime& around)
{
    return ReminderWords::clock(moment, there, around.calendar.locale());
}

std::string ClockText::count(std::int64_t number, std::string_view unit)
{
    return std::to_string(number) + " " + std::string(unit) + (number == 1 ? "" : "s");
}

std::string ClockText::length(std::chrono::minutes length)
{
    constexpr int minutesOfHour = 60;
    const auto hours = length.count() / minutesOfHour;
    const auto minutes = length.count() % minutesOfHour;
    if (hours == 0 && minutes == 0)
        return "less than a minute";
    if (hours == 0 || minutes == 0)
        return hours == 0 ? count(minutes, "minute") : count(hours, "hour");
    return count(hours, "hour") + " and " + count(minutes, "minute");
}

std::string ClockText::list(const std::vector<std::string>& parts)
{
    std::string text;
    for (std::size_t index = 0; index < parts.size(); ++index)
        text += (index == 0 ? "" : index + 1 == parts.size() ? " and " : ", ") + parts[index];
    return text;
}

std::chrono::sys_days ClockText::today(const LocalTime& around)
{
    return std::chrono::sys_days(around.calendar.day(around.now).time_since_epoch());
}

} // namespace quorvell
