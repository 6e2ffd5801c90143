// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/YearQuestions.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/DayWords.h"
#include "Understanding/time/SpokenPhrase.h"

#include <chrono>
#include <cstdlib>
#include <utility>

namespace quorvell {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;
using Said = std::optional<std::string>;

struct MonthOfYear {
    std::chrono::year year;
    std::chrono::month month;
    std::string said;
};

std::optional<MonthOfYear> monthIn(const std::string& words, sys_days today)
{
    static const Pattern named("^([a-z]{3,9})(?: (?:of |in )?(?:(\\d{4})|(this|next|last) year))?$");
    const year_month_day date(today);
    for (const auto& [said, shift] : {std::pair("this month", 0), {"the month", 0}, {"the current month", 0},
             {"next month", 1}, {"last month", -1}}) {
        if (words != said)
            continue;
        const auto moved = date.year() / date.month() + std::chrono::months(shift);
        return MonthOfYear{moved.year(), moved.month(),
            shift == 0      ? "This month"
                : shift > 0 ? "Next month"
                            : "Last month"};
    }
    const auto match = named.find(words);
    const auto month = match ? DayWords::month(match->texts[0]) : std::nullopt;
    if (!month)
        return std::nullopt;
    const std::string& shift = match->texts[2];
    if (!shift.empty()) {
        const auto year = date.year() + std::chrono::years(shift == "next" ? 1 : shift == "last" ? -1 : 0);
        return MonthOfYear{
            year, *month, withUpperCaseFirst(match->texts[0]) + " " + std::to_string(static_cast<int>(year))};
    }
    const bool isOpen = match->texts[1].empty();
    const auto year = isOpen ? date.year() + std::chrono::years(*month < date.month() ? 1 : 0)
                             : std::chrono::year(std::atoi(match->texts[1].c_str()));
    return MonthOfYear{year, *month, withUpperCaseFirst(match->texts[0]) + (isOpen ? "" : " " + match->texts[1])};
}

int daysIn(const MonthOfYear& of)
{
    const auto end = of.year / of.month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(end.day()));
}

Said monthLength(const std::string& phrase, const LocalTime& around)
{
    static const Pattern many(
        "^how many days (?:are |is |does |do |has |have |will |were |did |was )?(?:there |we )?(?:have )?(?:in "
        "|on |of )?(.+?)(?: have| has| got)?$");
    static const Pattern ofYear(
        "^how many days (?:are |is |does |has )?(?:there )?(?:in )?(?:a |this |the )?(leap )?year(?: have| has)?$");
    static const Pattern hasDay("^(?:do we|does|do|is|are|will|has|have)(?: we| there)?(?: be| have| got)? (?:an? |the "
                                ")?(\\d{1,2})(?:st|nd|rd|th)?(?: days?)? (?:(?:in|on|of) )?(.+?)(?: have)?$");
    static const Pattern hasDays(
        "^(?:do|does|has|will|did) (.+?) have (?:an? |the )?(\\d{1,2})(?:st|nd|rd|th)?(?: days?)?$");
    const sys_days now = ClockText::today(around);
    const std::string digits = SpokenPhrase::withDigits(phrase);
    if (const auto match = ofYear.find(phrase)) {
        const auto year = year_month_day(now).year();
        if (!match->texts[0].empty())
            return "A leap year has 366 days.";
        return std::string("This year has ") + (year.is_leap() ? "366" : "365") + " days.";
    }
    const auto match = many.find(phrase);
    if (const auto month = match ? monthIn(match->texts[0], now) : std::nullopt)
        return month->said + " has " + std::to_string(daysIn(*month)) + " days.";
    const auto first = hasDay.find(digits);
    const auto second = first ? std::nullopt : hasDays.find(digits);
    if (!first && !second)
        return std::nullopt;
    const auto month = monthIn(first ? first->texts[1] : second->texts[0], now);
    if (!month)
        return std::nullopt;
    const int asked = std::atoi((first ? first->texts[0] : second->texts[1]).c_str());
    const int length = daysIn(*month);
    return std::string(asked <= length && asked > 0 ? "Yes, " : "No, ")
        + (month->said.ends_with("month") ? lowerCased(month->said) : month->said) + " has " + std::to_string(length)
        + " days.";
}

Said leapYear(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form("^(?:is|was|will) (?:the year )?(\\d{4}|this year|next year|it|this)(?: be)? (?:an? "
                              ")?leap year(?: in (\\d{4}))?$");
    static const Pattern next("^(?:when (?:is|will be)|year is|which year is)? ?(?:the )?next leap year(?: be)?$");
    const auto now = year_month_day(ClockText::today(around)).year();
    if (next.find(phrase)) {
        auto year = now + std::chrono::years(1);
        while (!year.is_leap())
            ++year;
        return "The next leap year is " + std::to_string(static_cast<int>(year)) + ".";
    }
    const auto match = form.find(phrase);
    if (!match)
        return std::nullopt;
    const int said = std::atoi((match->texts[1].empty() ? match->texts[0] : match->texts[1]).c_str());
    const auto year =
        said > 0 ? std::chrono::year(said) : now + std::chrono::years(match->texts[0] == "next year" ? 1 : 0);
    return std::string(year.is_leap() ? "Yes, " : "No, ") + std::to_string(static_cast<int>(year))
        + (year.is_leap() ? " is" : " is not") + " a leap year.";
}

/// By ISO 8601: weeks begin on Monday, and the first one has the year's first Thursday.
int weekOfYear(sys_days day)
{
    const auto thursday = day + std::chrono::days(4 - static_cast<int>(std::chrono::weekday(day).iso_encoding()));
    const sys_days newYear = year_month_day(thursday).year() / std::chrono::January / 1;
    constexpr int week = 7;
    return static_cast<int>((thursday - newYear).count() / week) + 1;
}

Said week(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:the |current )*(?:calendar )?week(?: number)?(?: of the year)?(?: is it| it is| are we in| is this| is "
        "this week| this is)?$|^(?:the |current )*(?:week number|calendar week)(?: is| of| for| is it)? (.+)$");
    const auto match = form.find(phrase);
    if (!match || phrase == "week" || phrase == "the week")
        return std::nullopt;
    const sys_days now = ClockText::today(around);
    if (match->texts[0].empty())
        return "It is week " + std::to_string(weekOfYear(now)) + ".";
    const auto named = DayWords::read(match->texts[0], around);
    if (!named)
        return std::nullopt;
    return named->isImpossible ? std::string("There is no such day.")
                               : withUpperCaseFirst(ClockText::day(named->day, now)) + " is in week "
            + std::to_string(weekOfYear(named->day)) + ".";
}

} // namespace

std::optional<std::chrono::year_month> YearQuestions::month(const std::string& words, const LocalTime& around)
{
    const auto month = monthIn(words, ClockText::today(around));
    return month ? std::optional(month->year / month->month) : std::nullopt;
}

std::optional<std::string> YearQuestions::answer(const std::string& phrase, const LocalTime& around)
{
    for (const auto reader : {leapYear, monthLength, week}) {
        if (auto said = reader(phrase, around))
            return said;
    }
    return std::nullopt;
}

} // namespace quorvell
