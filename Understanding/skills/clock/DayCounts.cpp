// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/DayCounts.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/DayWords.h"
#include "Understanding/skills/clock/YearQuestions.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;
using Said = std::optional<std::string>;

/// The last day of what the word names.
sys_days endOf(const std::string& unit, sys_days today)
{
    const year_month_day date(today);
    if (unit == "year")
        return date.year() / std::chrono::December / 31;
    if (unit == "month")
        return date.year() / date.month() / std::chrono::last;
    constexpr int daysOfWeek = 7; // it ends on Sunday
    return unit == "week" ? today + days(daysOfWeek - static_cast<int>(std::chrono::weekday(today).iso_encoding()))
                          : today;
}

std::int64_t workdays(sys_days from, sys_days to)
{
    std::int64_t count = 0;
    constexpr unsigned friday = 5;
    for (sys_days day = from; day <= to; day += days(1))
        count += std::chrono::weekday(day).iso_encoding() <= friday ? 1 : 0;
    return count;
}

constexpr const char* holidaysCount = " Holidays among them are counted, too.";

/// "How many days are left this year", "how many hours are left today".
Said remaining(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form("^how (?:many|much) (?:more )?(days?|weeks?|hours?|minutes?|time|weekdays|work "
                              "?days|working days|business days)"
                              "(?: (?:are|is|do|does|have|has|there|we|i|it|remain|remaining|left|still|more|to "
                              "go|until|till|before|the|end|of|in"
                              "|for))* (?:the |this )?(day|today|week|month|year)(?: (?:left|remaining|is left|are "
                              "left|ends|is over|to go))*$");
    static const Pattern isLeft("\\b(?:left|remain|remaining|to go|end|ends|over|still|more)\\b");
    const auto match = form.find(phrase);
    if (!match || !isLeft.find(phrase))
        return std::nullopt;
    const std::string& unit = match->texts[0];
    const std::string& of = match->texts[1];
    const sys_days today = ClockText::today(around);
    if (of == "day" || of == "today") {
        const Instant midnight = around.calendar.addingDays(around.calendar.startOfDay(around.now), days(1));
        const auto left = std::chrono::duration_cast<std::chrono::minutes>(midnight - around.now);
        return "It is " + ClockText::length(left) + " until midnight.";
    }
    const sys_days end = endOf(of, today);
    const std::string where = " left of this " + of + ", not counting today.";
    if (unit.find("week") == 0 && unit.find("weekday") != 0) {
        constexpr int daysOfWeek = 7;
        const auto whole = (end - today).count();
        return "There are " + ClockText::count(whole / daysOfWeek, "week") + " and "
            + ClockText::count(whole % daysOfWeek, "day") + where;
    }
    const bool isOfWork = unit.find("work") == 0 || unit.find("business") == 0 || unit == "weekdays";
    const auto count = isOfWork ? workdays(today + days(1), end) : (end - today).count();
    const std::string what =
        isOfWork ? ClockText::count(count, "day") + " from Monday to Friday" : ClockText::count(count, "day");
    return std::string(count == 1 ? "There is " : "There are ") + what + where + (isOfWork ? holidaysCount : "");
}

/// "How many mondays are in december"
Said inMonth(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^how many (sundays|mondays|tuesdays|wednesdays|thursdays|fridays|saturdays|weekends|weekdays"
        "|work ?days|working days|business days)(?: (?:are|is|do|does|have|has|there|we|will|be))* "
        "(?:in |does |has )?(.+?)(?: have| has)?$");
    constexpr std::array names{"sundays", "mondays", "tuesdays", "wednesdays", "thursdays", "fridays", "saturdays"};
    const auto match = form.find(phrase);
    const auto span = match ? YearQuestions::month(match->texts[1], around) : std::nullopt;
    if (!span)
        return std::nullopt;
    const std::string& what = match->texts[0];
    const sys_days last = *span / std::chrono::last;
    const sys_days first = *span / 1;
    const std::string name = ClockText::day(first, ClockText::today(around));
    const std::string month = name.substr(name.find(" of ") + 4);
    const auto* const weekday = std::ranges::find(names, what);
    if (weekday == names.end() && what != "weekends")
        return month + " has " + ClockText::count(workdays(first, last), "day") + " from Monday to Friday."
            + holidaysCount;
    const unsigned wanted = weekday == names.end() ? 6 : static_cast<unsigned>(weekday - names.begin());
    std::int64_t count = 0;
    for (sys_days day = first; day <= last; day += days(1))
        count += std::chrono::weekday(day).c_encoding() == wanted ? 1 : 0;
    const std::string one = what == "weekends"
        ? "Saturday"
        : ClockText::weekday(first + (std::chrono::weekday(wanted) - std::chrono::weekday(first)));
    return month + " has " + ClockText::count(count, one) + ".";
}

/// "How many working days until christmas"
Said workdaysUntil(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^how many (?:weekdays|work ?days|working days|business days)(?: (?:are|is|do|have|there|we|left"
        "|more))* (?:until|till|til|to|before) (.+)$");
    const auto match = form.find(phrase);
    const auto named = match ? DayWords::read(match->texts[0], around) : std::nullopt;
    const sys_days today = ClockText::today(around);
    constexpr int mostDays = 4000; // nobody plans further ahead
    if (!named || named->isImpossible || named->day < today || named->day > today + days(mostDays))
        return std::nullopt;
    const auto count = workdays(today + days(1), named->day - days(1));
    return std::string(count == 1 ? "There is " : "There are ") + ClockText::count(count, "day")
        + " from Monday to Friday between today and " + ClockText::day(named->day, today) + "." + holidaysCount;
}

/// "How old is somebody born in 1985"
Said age(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form("^how old (?:is|am|are|was|will|would) .*?\\bborn (?:on |in )?(.+?)(?: be)?$");
    static const Pattern year("^(?:the year )?(\\d{4})$");
    static const Pattern inYear(
        "^how old (?:is|am|will|would|are) .*?\\bin (\\d{4})\\b.*\\bborn (?:on |in )?(?:the year )?(\\d{4})$"
        "|^how old (?:is|am|will|would|are) .*?\\bborn (?:on |in )?(?:the year )?(\\d{4})\\b.*\\bin (\\d{4})$");
    if (const auto both = inYear.find(phrase)) {
        const std::string& born = both->texts[1].empty() ? both->texts[2] : both->texts[1];
        const std::string& then = both->texts[0].empty() ? both->texts[3] : both->texts[0];
        const int years = std::atoi(then.c_str()) - std::atoi(born.c_str());
        return years < 0 ? std::nullopt
                         : Said("Somebody born in " + born + " turns " + std::to_string(years) + " in " + then + ".");
    }
    const auto match = form.find(phrase);
    if (!match)
        return std::nullopt;
    const year_month_day today(ClockText::today(around));
    if (const auto only = year.find(match->texts[0])) {
        const int years = static_cast<int>(today.year()) - std::atoi(only->texts[0].c_str());
        if (years < 1)
            return std::nullopt;
        return "Somebody born in " + only->texts[0] + " turns " + std::to_string(years) + " this year.";
    }
    static const Pattern hasYear("\\b\\d{4}\\b");
    const auto born =
        hasYear.find(match->texts[0]) ? DayWords::read(match->texts[0], around, DayWords::Year::past) : std::nullopt;
    if (!born || born->isImpossible || born->day > sys_days(today))
        return std::nullopt;
    const year_month_day birth(born->day);
    const bool hadBirthday =
        std::chrono::month_day(today.month(), today.day()) >= std::chrono::month_day(birth.month(), birth.day());
    const int years = static_cast<int>(today.year()) - static_cast<int>(birth.year()) - (hadBirthday ? 0 : 1);
    return "Somebody born on " + ClockText::day(born->day, sys_days(today)) + " is " + ClockText::count(years, "year")
        + " old.";
}

/// "Which quarter are we in"
Said quarter(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form("^(?:the |current )*quarter(?: of the year)?(?: is it| it is| is this| are we in| is "
                              "today)*(?: of the year)?$");
    constexpr std::array names{"first", "second", "third", "fourth"};
    constexpr unsigned months = 3;
    const unsigned month = static_cast<unsigned>(year_month_day(ClockText::today(around)).month());
    return form.find(phrase) ? Said("It is the " + std::string(names[(month - 1) / months]) + " quarter of the year.")
                             : std::nullopt;
}

} // namespace

std::optional<std::string> DayCounts::answer(const std::string& phrase, const LocalTime& around)
{
    for (const auto reader : {remaining, inMonth, workdaysUntil, age, quarter}) {
        if (auto said = reader(phrase, around))
            return said;
    }
    return std::nullopt;
}

} // namespace quorvell
