// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/calendar/Holidays.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

using std::chrono::days;

struct Fixed {
    std::string_view name;
    unsigned month;
    unsigned day;
};

constexpr auto fixed = std::to_array<Fixed>({{"new year's day", 1, 1}, {"new years day", 1, 1}, {"epiphany", 1, 6},
    {"valentine's day", 2, 14}, {"valentines day", 2, 14}, {"valentine's", 2, 14}, {"valentines", 2, 14},
    {"st patrick's day", 3, 17}, {"st patricks day", 3, 17}, {"saint patrick's day", 3, 17}, {"april fools day", 4, 1},
    {"april fool's day", 4, 1}, {"april fools' day", 4, 1}, {"may day", 5, 1}, {"halloween", 10, 31},
    {"all saints' day", 11, 1}, {"all saints day", 11, 1}, {"bonfire night", 11, 5}, {"guy fawkes night", 11, 5},
    {"christmas eve", 12, 24}, {"xmas eve", 12, 24}, {"christmas day", 12, 25}, {"xmas day", 12, 25},
    {"christmas", 12, 25}, {"xmas", 12, 25}, {"boxing day", 12, 26}, {"st stephen's day", 12, 26},
    {"new year's eve", 12, 31}, {"new years eve", 12, 31}, {"nye", 12, 31}});

/// Days from Easter Sunday.
struct Moving {
    std::string_view name;
    int days;
};

constexpr auto moving = std::to_array<Moving>({{"shrove tuesday", -47}, {"pancake day", -47}, {"ash wednesday", -46},
    {"palm sunday", -7}, {"maundy thursday", -3}, {"good friday", -2}, {"easter sunday", 0}, {"easter day", 0},
    {"easter", 0}, {"easter monday", 1}, {"whit sunday", 49}, {"whit monday", 50}});

LocalDay date(int year, unsigned month, unsigned day)
{
    return LocalDay(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day));
}

/// The fourth Thursday of November.
LocalDay thanksgiving(int year)
{
    constexpr int thursday = 5;
    const LocalDay first = date(year, 11, 1);
    return first + days((thursday - Calendar::weekday(first) + 7) % 7 + 21);
}

std::optional<LocalDay> inYear(std::string_view name, int year)
{
    if (const auto row = std::ranges::find(fixed, name, &Fixed::name); row != fixed.end())
        return date(year, row->month, row->day);
    if (const auto row = std::ranges::find(moving, name, &Moving::name); row != moving.end())
        return Holidays::easter(year) + days(row->days);
    if (name == "thanksgiving" || name == "thanksgiving day")
        return thanksgiving(year);
    return name == "black friday" ? std::optional(thanksgiving(year) + days(1)) : std::nullopt;
}

} // namespace

/// By the rule of Gauss as Meeus, Jones and Butcher stated it: the first Sunday after the full moon that the church
/// counts by.
LocalDay Holidays::easter(int year)
{
    const int golden = year % 19;
    const int century = year / 100;
    const int ofCentury = year % 100;
    const int correction = (century - (century + 8) / 25 + 1) / 3;
    const int moon = (19 * golden + century - century / 4 - correction + 15) % 30;
    const int weekday = (32 + 2 * (century % 4) + 2 * (ofCentury / 4) - moon - ofCentury % 4) % 7;
    const int late = (golden + 11 * moon + 22 * weekday) / 451;
    const int count = moon + weekday - 7 * late + 114;
    return date(year, static_cast<unsigned>(count / 31), static_cast<unsigned>(count % 31 + 1));
}

bool Holidays::mayBegin(std::string_view word)
{
    const auto begins = [word](const auto& row) { return row.name.starts_with(word); };
    return !word.empty()
        && (std::ranges::any_of(fixed, begins) || std::ranges::any_of(moving, begins) || word == "thanksgiving"
            || word == "black");
}

std::optional<LocalDay> Holidays::next(std::string_view name, LocalDay from)
{
    const auto year = static_cast<int>(std::chrono::year_month_day(from).year());
    const auto day = inYear(name, year);
    return day && *day < from ? inYear(name, year + 1) : day;
}

} // namespace quorvell
