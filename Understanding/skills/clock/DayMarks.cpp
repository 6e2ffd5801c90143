// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/DayMarks.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/SeasonQuestions.h"
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

constexpr unsigned saturdayIso = 6;

Said endOfMonth(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:when is |date is |day is )?(?:the )?(last|first) (?:day|date) (?:of|in) (?:the )?(.+?)(?: on| fall on)?$");
    const auto match = form.find(phrase);
    const auto month = match ? YearQuestions::month(match->texts[1], around) : std::nullopt;
    if (!month)
        return std::nullopt;
    const sys_days day = match->texts[0] == "last" ? sys_days(*month / std::chrono::last) : sys_days(*month / 1);
    return "That is " + ClockText::day(day, ClockText::today(around)) + ".";
}

/// "Saturday's date"
Said dateOfWeekday(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:the )?((?:next |this |last |coming )?(?:sun|mon|tues|wednes|thurs|fri|satur)day) ?s date$");
    const auto match = form.find(phrase);
    const auto day = match ? DayWords::read(match->texts[0], around) : std::nullopt;
    if (!day)
        return std::nullopt;
    return "That is " + ClockText::day(day->day, ClockText::today(around)) + ".";
}

Said weekend(const std::string& phrase, const LocalTime& around)
{
    static const Pattern when(
        "^(?:when|day|date)(?: is| does| will)?(?: the| this)?(?: next)? weekend(?: start| begin| be)?$");
    static const Pattern isKind("^(?:is|are) (?:it|today|this|we)(?: on| in)?(?: an?| the)? (weekend|weekday|week "
                                "day|work ?day|working day|business day)"
                                "(?: today| now| yet)?$");
    const sys_days today = ClockText::today(around);
    const unsigned number = std::chrono::weekday(today).iso_encoding();
    if (when.find(phrase))
        return number >= saturdayIso
            ? Said("The weekend is now: today is " + ClockText::day(today, today) + ".")
            : Said("The weekend begins on " + ClockText::day(today + days(saturdayIso - number), today) + ".");
    const auto match = isKind.find(phrase);
    if (!match)
        return std::nullopt;
    const bool isSo = (match->texts[0] == "weekend") == (number >= saturdayIso);
    return std::string(isSo ? "Yes" : "No") + ", today is " + ClockText::day(today, today) + ".";
}

Said seasonNow(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:the |current )*season(?: is it| it is| is this| are we in| is it now| of the year| is it currently)*$");
    if (!form.find(phrase))
        return std::nullopt;
    constexpr std::array seasons{"spring", "summer", "autumn", "winter"};
    const auto* first = seasons.end();
    sys_days earliest{};
    for (const auto* season = seasons.begin(); season != seasons.end(); ++season) {
        const auto begin = SeasonQuestions::beginning(*season, around);
        if (begin && (first == seasons.end() || *begin < earliest)) {
            first = season;
            earliest = *begin;
        }
    }
    if (first == seasons.end())
        return std::nullopt;
    const auto* const now = first == seasons.begin() ? seasons.end() - 1 : first - 1;
    return "In the northern half of the world it is " + std::string(*now) + ", and " + *first + " begins on "
        + ClockText::day(earliest, ClockText::today(around)) + ".";
}

Said century(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:the |current )*(century|decade|millennium)(?: is it| it is| is this| are we in| now)*$");
    const auto match = form.find(phrase);
    if (!match)
        return std::nullopt;
    constexpr int yearsOfCentury = 100;
    constexpr int yearsOfDecade = 10;
    const int year = static_cast<int>(year_month_day(ClockText::today(around)).year());
    if (match->texts[0] == "decade")
        return "It is the " + std::to_string(year / yearsOfDecade * yearsOfDecade) + "s.";
    return match->texts[0] == "century"
        ? "It is the " + std::to_string((year + yearsOfCentury - 1) / yearsOfCentury) + "st century."
        : "It is the third millennium.";
}

/// "What day was I born on, 4 May 1988", "what day is my birthday on, it is the 14th of May".
Said dayOfDate(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form("^(?:on )?(?:what |which )?(?:day|weekday|day of the week) (is|was|will|were) "
                              "(?:i|he|she|we|my|our|his|her|\\w+ s)"
                              "(?: \\w+){0,3}? (?:born|birthday|anniversary|wedding)(?: be)?(?: on| if| when)*(?: it "
                              "is| i was born| it was| on| is)*"
                              "(?: on| the)* (.*\\d.*)$");
    const auto match = form.find(phrase);
    const auto open = match && match->texts[0] == "is" ? DayWords::Year::coming : DayWords::Year::past;
    const auto day = match ? DayWords::read(match->texts[1], around, open) : std::nullopt;
    if (!day || day->isImpossible)
        return std::nullopt;
    const sys_days today = ClockText::today(around);
    return std::string(day->day < today ? "That was " : "That is ") + ClockText::day(day->day, today) + ".";
}

Said yearLength(const std::string& phrase, const LocalTime&)
{
    static const Pattern form(
        "^how many days (?:are |is |does |has |were )?(?:there )?(?:in )?(?:the year )?(\\d{4})(?: have| has)?$");
    const auto match = form.find(phrase);
    if (!match)
        return std::nullopt;
    const auto year = std::chrono::year(std::atoi(match->texts[0].c_str()));
    return match->texts[0] + " has " + (year.is_leap() ? "366" : "365") + " days.";
}

} // namespace

std::optional<DayWords> DayMarks::beginning(const std::string& words, const LocalTime& around)
{
    static const Pattern lead("^(?:the )?(?:(?:start|beginning|first day) of )?(?:the |next )?");
    const std::string what = lead.replaceAll(words, "");
    if (const auto season = SeasonQuestions::beginning(what, around))
        return DayWords{*season, "the beginning of " + (what == "fall" ? "autumn" : what)};
    const sys_days today = ClockText::today(around);
    const auto number = DayWords::month(what);
    if (!number || what.size() < 3)
        return std::nullopt;
    const auto year = year_month_day(today).year();
    const sys_days thisYears = year / *number / 1;
    return DayWords{thisYears >= today ? thisYears : sys_days((year + std::chrono::years(1)) / *number / 1)};
}

std::optional<std::string> DayMarks::answer(const std::string& phrase, const LocalTime& around)
{
    for (const auto reader : {endOfMonth, dateOfWeekday, weekend, seasonNow, century, dayOfDate, yearLength}) {
        if (auto said = reader(phrase, around))
            return said;
    }
    return std::nullopt;
}

} // namespace quorvell
