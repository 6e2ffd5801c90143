// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/DayWords.h"

#include "QuorvellCore/reminders/calendar/FeastDays.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWords.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace quorvell {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;
using Day = std::optional<DayWords>;

constexpr std::array monthStarts{"january", "february", "march", "april", "may", "june", "july", "august", "september",
    "october", "november", "december"};

/// The day of that date, in the year that is meant where none was named.
Day dated(int day, std::chrono::month month, int year, const LocalTime& around, DayWords::Year open)
{
    const sys_days today = ClockText::today(around);
    const auto of = [&](std::chrono::year in) {
        return year_month_day(in, month, std::chrono::day(static_cast<unsigned>(day)));
    };
    if (year != 0)
        return of(std::chrono::year(year)).ok() ? DayWords{sys_days(of(std::chrono::year(year)))}
                                                : DayWords{.isImpossible = true};
    constexpr int leapCycle = 8; // the 29th of February may be that far away
    const auto thisYear = year_month_day(today).year();
    for (int step = 0; step <= leapCycle; ++step) {
        const auto date = of(thisYear + std::chrono::years(open == DayWords::Year::coming ? step : -step));
        if (date.ok() && (open == DayWords::Year::coming ? sys_days(date) >= today : sys_days(date) <= today))
            return DayWords{sys_days(date)};
    }
    return DayWords{.isImpossible = true};
}

constexpr std::array weekdayStarts{"sun", "mon", "tues", "wednes", "thurs", "fri", "satur"};

/// The next day of that number which is that weekday: "friday the 13th".
Day nextOn(const std::string& weekday, int number, sys_days today)
{
    const auto wanted = static_cast<unsigned>(std::ranges::find(weekdayStarts, weekday) - weekdayStarts.begin());
    constexpr int longest = 366 * 12; // a 31st that is such a weekday may be years away
    for (sys_days day = today; day < today + std::chrono::days(longest); day += std::chrono::days(1)) {
        if (static_cast<int>(static_cast<unsigned>(year_month_day(day).day())) == number
            && std::chrono::weekday(day).c_encoding() == wanted)
            return DayWords{day};
    }
    return DayWords{.isImpossible = true};
}

Day byDate(const std::string& words, const LocalTime& around, DayWords::Year open)
{
    static const std::string names = "(jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|"
                                     "sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)\\.?";
    static const Pattern dayFirst(
        "^(?:the )?(\\d{1,2})(?:st|nd|rd|th)?(?: day)?(?: of)? " + names + "(?:,? (?:in )?(\\d{4}))?$");
    static const Pattern monthFirst("^" + names + " (?:the )?(\\d{1,2})(?:st|nd|rd|th)?(?:,? (?:in )?(\\d{4}))?$");
    static const Pattern slashes("^(\\d{1,2})[/. ](\\d{1,2})[/. ](\\d{4})$");
    static const Pattern ofWeekday(
        "^(?:next |the next |the )?(sun|mon|tues|wednes|thurs|fri|satur)day,? (?:the )?(\\d{1,2})(?:st|nd|rd|th)$");
    static const Pattern iso("^(\\d{4})-(\\d{1,2})-(\\d{1,2})$");
    if (const auto match = dayFirst.find(words))
        return dated(std::atoi(match->texts[0].c_str()), *DayWords::month(match->texts[1]),
            std::atoi(match->texts[2].c_str()), around, open);
    if (const auto match = monthFirst.find(words))
        return dated(std::atoi(match->texts[1].c_str()), *DayWords::month(match->texts[0]),
            std::atoi(match->texts[2].c_str()), around, open);
    if (const auto match = iso.find(words))
        return dated(std::atoi(match->texts[2].c_str()),
            std::chrono::month(static_cast<unsigned>(std::atoi(match->texts[1].c_str()))),
            std::atoi(match->texts[0].c_str()), around, open);
    if (const auto match = slashes.find(words)) {
        constexpr int lastMonth = 12;
        int day = std::atoi(match->texts[0].c_str());
        int month = std::atoi(match->texts[1].c_str());
        if (month > lastMonth || (day <= lastMonth && around.calendar.locale().ends_with("_US")))
            std::swap(day, month);
        return dated(
            day, std::chrono::month(static_cast<unsigned>(month)), std::atoi(match->texts[2].c_str()), around, open);
    }
    if (const auto match = ofWeekday.find(words))
        return nextOn(match->texts[0], std::atoi(match->texts[1].c_str()), ClockText::today(around));
    return std::nullopt;
}

Day byHoliday(const std::string& words, const LocalTime& around, DayWords::Year open)
{
    static const Pattern withYear("^(.+?),? (?:(?:in|of) )?(?:(\\d{4})|(this|next|last) year)$");
    const sys_days today = ClockText::today(around);
    const auto now = year_month_day(today).year();
    std::optional<FeastDay> holiday;
    if (const auto match = withYear.find(words)) {
        const std::string& said = match->texts[2];
        const int shift = said == "next" ? 1 : said == "last" ? -1 : 0;
        const auto year = match->texts[1].empty() ? now + std::chrono::years(shift)
                                                  : std::chrono::year(std::atoi(match->texts[1].c_str()));
        holiday = FeastDays::in(year, RequestText::phrase(match->texts[0]));
    } else {
        static const Pattern lead("^(?:next|the next|this|this coming|coming|last) ");
        const bool isLast = words.starts_with("last ") || open == DayWords::Year::past;
        const std::string name = RequestText::phrase(lead.replaceAll(words, ""));
        holiday = FeastDays::next(today, name);
        if (holiday && isLast) {
            const auto thisYears = FeastDays::in(now, name);
            holiday = thisYears->day <= today ? thisYears : FeastDays::in(now - std::chrono::years(1), name);
        }
    }
    return holiday ? Day(DayWords{holiday->day, holiday->name}) : std::nullopt;
}

sys_days shifted(sys_days day, int count, std::string_view unit)
{
    constexpr int week = 7;
    if (unit.starts_with("day") || unit.starts_with("night") || unit.starts_with("sleep"))
        return day + std::chrono::days(count);
    if (unit.starts_with("week"))
        return day + std::chrono::days(week * count);
    if (unit.starts_with("fortnight"))
        return day + std::chrono::days(2 * week * count);
    year_month_day date(day);
    date += unit.starts_with("month") ? std::chrono::months(count) : std::chrono::months(12 * count);
    return date.ok() ? sys_days(date) : sys_days(date.year() / date.month() / std::chrono::last);
}

std::optional<int> countIn(const std::string& words)
{
    static const Pattern digits("^\\d{1,5}$");
    if (words == "a" || words == "an")
        return 1;
    if (words == "a couple of" || words == "couple of")
        return 2;
    if (digits.find(words))
        return std::atoi(words.c_str());
    const SpokenWords spoken(words);
    const auto number = spoken.cardinal(0);
    return number && number->words == spoken.size() ? std::optional(number->value) : std::nullopt;
}

/// "in three weeks", "90 days from today", "2 months ago", "10 days after christmas".
Day byDistance(const std::string& words, const LocalTime& around, DayWords::Year open)
{
    static const Pattern form(
        "^(?:in |exactly )*(.+?) (days?|nights?|sleeps?|weeks?|fortnights?|months?|years?)(?: time)?"
        "(?: (ago|back|later|from now|from today|hence|before now|prior)| (from|after|before|prior to|past) (.+))?$");
    const auto match = form.find(words);
    const auto count = match ? countIn(match->texts[0]) : std::nullopt;
    if (!count)
        return std::nullopt;
    const std::string& end = match->texts[2];
    const std::string& link = match->texts[3];
    const bool isBare = end.empty() && link.empty();
    if (isBare && !words.starts_with("in "))
        return std::nullopt;
    Day start = DayWords{ClockText::today(around)};
    if (!link.empty())
        start = DayWords::read(match->texts[4], around, open);
    if (!start || start->isImpossible)
        return start;
    const bool isBack = end == "ago" || end == "back" || end == "before now" || end == "prior" || link == "before"
        || link == "prior to";
    return DayWords{shifted(start->day, isBack ? -*count : *count, match->texts[1])};
}

/// What reminders and events never need: days that are over.
Day byLookingBack(const std::string& words, const LocalTime& around)
{
    static const Pattern lastOne("^last (sun|mon|tues|wednes|thurs|fri|satur)day$");
    const sys_days today = ClockText::today(around);
    if (words == "yesterday")
        return DayWords{today - std::chrono::days(1)};
    if (words == "the day before yesterday" || words == "day before yesterday")
        return DayWords{today - std::chrono::days(2)};
    const auto match = lastOne.find(words);
    if (!match)
        return std::nullopt;
    const auto wanted = std::ranges::find(weekdayStarts, match->texts[0]) - weekdayStarts.begin();
    const auto back = std::chrono::weekday(today) - std::chrono::weekday(static_cast<unsigned>(wanted));
    return DayWords{today - (back.count() == 0 ? std::chrono::days(7) : back)};
}

Day bySpokenDays(const std::string& words, const LocalTime& around)
{
    const auto days = SpokenDays::read(words, around);
    if (!days || !days->isOneDay())
        return std::nullopt;
    const auto day = Calendar::dayOf(days->from.year, days->from.month, days->from.day);
    return day ? Day(DayWords{sys_days(day->time_since_epoch())}) : std::nullopt;
}

} // namespace

std::optional<std::chrono::month> DayWords::month(std::string_view word)
{
    const std::string lower = lowerCased(word);
    const auto* const found = std::ranges::find_if(monthStarts, [&](std::string_view name) {
        return lower.size() >= 3 && name.starts_with(lower.substr(0, lower == "sept" ? 4 : lower.size()));
    });
    return found == monthStarts.end()
        ? std::nullopt
        : std::optional(std::chrono::month(static_cast<unsigned>(found - monthStarts.begin()) + 1));
}

std::optional<DayWords> DayWords::read(std::string_view said, const LocalTime& around, Year open)
{
    constexpr std::size_t longest = 80; // bytes; no day has more
    static const Pattern lead("^(?:on|for|of|at) ");
    const std::string words = lead.replaceAll(lowerCased(trimmed(said, ".,!?")), "");
    if (words.empty() || words.size() > longest)
        return std::nullopt;
    if (auto day = byHoliday(words, around, open))
        return day;
    const std::string digits = SpokenPhrase::withDigits(words);
    for (const std::string& form : {words, digits}) {
        if (auto day = byDate(form, around, open))
            return day;
    }
    if (auto day = byDistance(words, around, open))
        return day;
    if (auto day = byLookingBack(words, around))
        return day;
    return bySpokenDays(words, around);
}

} // namespace quorvell
