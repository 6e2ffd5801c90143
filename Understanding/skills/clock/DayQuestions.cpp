// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/DayQuestions.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/ClockTime.h"
#include "Understanding/skills/clock/DayCounts.h"
#include "Understanding/skills/clock/DayMarks.h"
#include "Understanding/skills/clock/DayWords.h"
#include "Understanding/skills/clock/NearDays.h"
#include "Understanding/skills/clock/SeasonQuestions.h"
#include "Understanding/skills/clock/YearQuestions.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/words/RequestText.h"

#include <chrono>
#include <cmath>
#include <cstdlib>

namespace quorvell {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;
using Said = std::optional<std::string>;

constexpr const char* noSuchDay = "There is no such day.";

/// "Christmas Day is on ", "That is "
std::string subject(const DayWords& named, sys_days today)
{
    const std::string verb = named.day < today ? " was " : " is ";
    return named.name.empty() ? "That" + verb : withUpperCaseFirst(named.name) + verb + "on ";
}

std::string dayText(const DayWords& named, sys_days today)
{
    if (named.isImpossible)
        return noSuchDay;
    if (named.day == today)
        return withUpperCaseFirst(named.name.empty() ? "that" : named.name) + " is today, "
            + ClockText::day(named.day, today) + ".";
    return subject(named, today) + ClockText::day(named.day, today) + ".";
}

Said today(const std::string& phrase, const LocalTime& around)
{
    static const std::string what = "(?:date|day|day of (?:the )?week|weekday|week day|day and date|date and "
                                    "day|calendar date|day of the month|days date)";
    static const Pattern day(
        "^(?:the |current |today |todays |exact |full |actual |right |correct |present |this |is )*" + what
        + "(?: is it| it is| is| it| today| of today| is this| for today| of the day| be| s)*$"
          "|^today(?: is)?(?: which| what)? "
        + what + "(?: is it)?$|^today is$|^is today(?: date)?$|^days? (?:is )?(?:it )?today$");
    static const Pattern both(
        "^(?:the |current |todays |today )*(?:date and (?:the )?time|time and (?:the "
        ")?(?:date|day)|day and time|date time)(?: is it| it is| today| now)*$"
        "|^(?:the )?(?:day|date)(?: is (?:it|today|it today))? and (?:what |which |the )*time(?: is it)?$"
        "|^(?:the )?time(?: is it)? and (?:what |which |the )*(?:day|date)(?: is (?:it|today|it today))?$");
    static const Pattern month(
        "^(?:the |current )*month(?: is it| it is| is this| are we in| is today| of the year)*$");
    static const Pattern year("^(?:the |current )*year(?: is it| it is| is this| are we in| do we have| is today)*$");
    static const Pattern ofYear("^(?:the )?day(?: number)? of the year(?: is it| it is| is today| today)*$");
    const sys_days now = ClockText::today(around);
    const year_month_day date(now);
    const std::string yearText = std::to_string(static_cast<int>(date.year()));
    if (both.find(phrase))
        return "It is " + ClockText::clock(around.now, around.calendar, around) + " on " + ClockText::day(now, now)
            + " " + yearText + ".";
    if (day.find(phrase))
        return "Today is " + ClockText::day(now, now) + " " + yearText + ".";
    if (month.find(phrase)) {
        const std::string whole = ClockText::day(now, now);
        return "It is " + whole.substr(whole.rfind(' ') + 1) + ".";
    }
    if (year.find(phrase))
        return "It is " + yearText + ".";
    if (ofYear.find(phrase))
        return "It is day " + std::to_string((now - sys_days(date.year() / 1 / 1)).count() + 1) + " of the year.";
    return std::nullopt;
}

Said weekdayOf(const std::string& phrase, const LocalTime& around)
{
    static const std::string day = "(?:day|weekday|week day|day of (?:the )?week|days?)(?: of (?:the )?week)?";
    static const Pattern first("^(?:on |the )?(?:what |which )?" + day
        + " (is|was|will|does|did|would|falls|fell|has|on)(?: it)?(?: be)? (.+?)(?: "
          "(?:fall|fell|falls|be|is|was|land|come|occur|on|in|upon|this year))*(?: (next year|last year))?$");
    static const Pattern second("^(.+?) (is|was|falls|fell|will be|does)(?: fall)?(?: on)? (?:what |which )(?:" + day
        + "|date)(?: of (?:the )?week)?(?: is it)?$");
    static const Pattern notDay("^(?:it|today|this|that|of)\\b");
    const auto match = first.find(phrase);
    const auto turned = match ? std::nullopt : second.find(phrase);
    if (!match && !turned)
        return std::nullopt;
    const std::string& verb = match ? match->texts[0] : turned->texts[1];
    const std::string words =
        match ? match->texts[1] + (match->texts[2].empty() ? "" : " " + match->texts[2]) : turned->texts[0];
    const auto open = verb == "was" || verb == "did" || verb == "fell" ? DayWords::Year::past : DayWords::Year::coming;
    const auto named = notDay.find(words) ? std::nullopt : DayWords::read(words, around, open);
    return named ? Said(dayText(*named, ClockText::today(around))) : std::nullopt;
}

/// "The date of next tuesday", "in three weeks", "when is easter".
Said dateOf(const std::string& phrase, const std::string& core, const LocalTime& around)
{
    static const Pattern form(
        "^(?:will |would )?(?:the )?(?:exact )?(?:date|day|day and date)(?: is| was| will be| will| would be)?(?: "
        "it)?(?: be)?(?: for| of| on| in)? (.+?)(?: be| fall on| is it| fall)?$");
    static const Pattern when(
        "^(?:when|whens|on what date)(?: is| was| are| will be| does| do)?(?: the date of| we celebrate| we have| it)? "
        "(.+?)(?: celebrated| this year fall| fall| start| begin| be| come)?$");
    const sys_days now = ClockText::today(around);
    for (const Pattern* pattern : {&form, &when}) {
        const auto match = pattern->find(phrase);
        if (!match)
            continue;
        const auto open = phrase.find(" was ") != std::string::npos ? DayWords::Year::past : DayWords::Year::coming;
        auto named = DayWords::read(match->texts[0], around, open);
        if (!named) // "in" may belong to it: "in three weeks"
            named = DayWords::read("in " + match->texts[0], around, open);
        // "When is friday" may well ask what is on then.
        static const Pattern sure(
            "^(?:the )?(?:\\d+ (?:day|week|month|year)|(?:an?|one|two|three|four|five|six) "
            "(?:days?|weeks?|months?|years?) "
            "(?:from|after|before)|next |first |second |third |fourth |fifth |last |\\w+day the \\d)");
        const bool isSure =
            pattern == &form || (named && !named->name.empty()) || (named && sure.find(match->texts[0]));
        if (named && isSure)
            return dayText(*named, now);
    }
    static const Pattern namedDate("^(?:the )?(.+?) (?:date|day and date)(?: this year)?$");
    if (const auto match = namedDate.find(phrase)) {
        const auto named = DayWords::read(match->texts[0], around);
        if (named && !named->name.empty())
            return dayText(*named, now);
    }
    static const Pattern bare("^(?:what is |whats |what was |what will be |what date is |what day is )?((?:in "
                              ")?\\S+(?: \\S+)? (?:days?|weeks?|months?|years?) (?:from|after|before|ago)\\b.*|(?:the "
                              ")?day (?:after tomorrow|before yesterday)|tomorrow|yesterday)$");
    const std::string whole = RequestText::phrase(core);
    if (const auto match = bare.find(whole);
        match && (whole.starts_with("what") || whole.find(" from ") != std::string::npos)) {
        if (const auto named = DayWords::read(match->texts[0], around))
            return dayText(*named, now);
    }
    return std::nullopt;
}

std::string fullDays(std::int64_t count, const std::string& unit)
{
    constexpr int week = 7;
    if (unit.starts_with("week")) {
        const auto weeks = count / week;
        const auto left = count % week;
        if (weeks == 0)
            return ClockText::count(left, "day");
        return ClockText::count(weeks, "week") + (left > 0 ? " and " + ClockText::count(left, "day") : "");
    }
    return ClockText::count(count, unit.starts_with("sleep") ? "sleep" : unit.starts_with("night") ? "night" : "day");
}

std::string monthsBetween(sys_days from, sys_days to)
{
    int months = 0;
    const year_month_day start(from);
    const auto after = [&](int count) {
        const year_month_day date = start + std::chrono::months(count);
        return date.ok() ? sys_days(date) : sys_days(date.year() / date.month() / std::chrono::last);
    };
    while (after(months + 1) <= to)
        ++months;
    const auto left = (to - after(months)).count();
    if (months == 0)
        return ClockText::count(left, "day");
    return ClockText::count(months, "month") + (left > 0 ? " and " + ClockText::count(left, "day") : "");
}

std::string stretch(sys_days from, sys_days to, const std::string& unit)
{
    constexpr int hoursOfDay = 24;
    const auto days = (to - from).count();
    constexpr int mostYears = 400;
    if (unit.starts_with("month") && days < mostYears * 366)
        return monthsBetween(from, to);
    if (unit.starts_with("hour"))
        return "about " + ClockText::count(days * hoursOfDay, "hour");
    constexpr int longDays = 366; // what nobody pictures as days any more
    if ((unit.empty() || unit == "time") && days >= longDays) {
        constexpr double daysOfYear = 365.2425;
        return "about " + ClockText::count(std::lround(static_cast<double>(days) / daysOfYear), "year");
    }
    return fullDays(days, unit);
}

std::string distance(const DayWords& named, const std::string& unit, sys_days today)
{
    if (named.isImpossible)
        return noSuchDay;
    const std::string what = named.name.empty() ? ClockText::day(named.day, today) : named.name;
    if (named.day == today)
        return withUpperCaseFirst(what) + " is today.";
    if (named.day < today)
        return withUpperCaseFirst(what) + " was " + stretch(named.day, today, unit) + " ago"
            + (named.name.empty() ? "" : ", on " + ClockText::day(named.day, today)) + ".";
    return "It is " + stretch(today, named.day, unit) + " until " + what
        + (named.name.empty() ? "" : ", " + ClockText::day(named.day, today)) + ".";
}

/// "How long until 5 pm": the next time that the clock shows it.
Said untilClock(const std::string& words, const LocalTime& around)
{
    const auto times = ClockTime::read(trimmed(SpokenPhrase::withDigits(words)));
    if (times.empty())
        return std::nullopt;
    std::string said;
    for (const auto time : times) {
        Instant moment = around.calendar.instant(around.calendar.day(around.now), time);
        if (moment <= around.now)
            moment = around.calendar.addingDays(moment, std::chrono::days(1));
        const auto length = std::chrono::duration_cast<std::chrono::minutes>(moment - around.now);
        const bool isByName = words == "midnight" || words == "noon" || words == "midday";
        said += (said.empty() ? "It is " : ", and ") + ClockText::length(length) + " until "
            + (isByName ? words : ClockText::clock(moment, around.calendar, around));
    }
    return said + ".";
}

Said daysUntil(const std::string& phrase, const std::string& core, const LocalTime& around)
{
    static const std::string count =
        "(?:how (?:many|much) (?:more )?(days?|weeks?|months?|nights?|sleeps|hours?|minutes?|seconds?|time)(?: "
        "(?:is|are|do|does|have|has|remain|left|remaining|more|away|off|to "
        "go|there|we|i|it|got|until|be|will|passed|gone by|been|it been))*?"
        "|how (?:long|far)(?: (?:is|have|has|do|does|will|there|i|we|it|got|be|left|away|off|until|ago|been|it "
        "been|was))*?|(?:countdown|days|weeks|number of days)(?: left| remaining)?)";
    static const Pattern until("^" + count
        + " (?:until|untill|till|til|to|before|is|are|off is|away is) (?:it is |its |it gets )?(.+?)(?: "
          "(?:away|off|from now|from today|come|comes|starts|is))*$");
    static const Pattern since("^" + count + " (?:since|ago was|ago is|passed since) (.+)$");
    static const Pattern between(
        "^(?:how (?:many|much) (days|weeks|months) (?:are |is |lie )?(?:there )?|(?:the )?number of "
        "(days|weeks|months) |days )(?:between|from) (.+?) (?:and|to|until|till) (.+)$");
    const sys_days now = ClockText::today(around);
    if (const auto match = between.find(phrase)) {
        const auto from = DayWords::read(match->texts[2], around);
        const auto to = DayWords::read(match->texts[3], around);
        if (!from || !to)
            return std::nullopt;
        if (from->isImpossible || to->isImpossible)
            return noSuchDay;
        const auto [first, second] = std::minmax(from->day, to->day);
        return "From " + ClockText::day(first, now) + " to " + ClockText::day(second, now) + " it is "
            + stretch(first, second, match->texts[0] + match->texts[1]) + ".";
    }
    if (const auto match = since.find(phrase)) {
        const auto named = DayWords::read(match->texts[1], around, DayWords::Year::past);
        return named ? Said(distance(*named, match->texts[0], now)) : std::nullopt;
    }
    const auto match = until.find(phrase);
    if (!match)
        return std::nullopt;
    static const Pattern clock(
        "(?:until|untill|till|til|to|before) (?:it is |it['’]s )?(" + std::string(ClockTime::pattern) + ")[?.! ]*$",
        Pattern::caseless);
    static const Pattern full(" ?o['’ ]?clock\\b", Pattern::caseless);
    if (const auto time = clock.find(full.replaceAll(SpokenPhrase::withDigits(full.replaceAll(core, "")), ""))) {
        if (auto said = untilClock(time->texts[0], around))
            return said;
    }
    // "How many days are in 3 weeks" counts from no day.
    auto named = match->texts[1].starts_with("in ") ? std::nullopt : DayWords::read(match->texts[1], around);
    static const Pattern dated("^(?:my|our|the|his|her|\\w+ ?s) .{1,40}? on (.+)$");
    if (const auto own = named ? std::nullopt : dated.find(match->texts[1]))
        named = DayWords::read(own->texts[0], around);
    if (!named)
        named = DayMarks::beginning(match->texts[1], around);
    return named ? Said(distance(*named, match->texts[0], now)) : std::nullopt;
}

Said cannotTell(const std::string& phrase)
{
    static const Pattern sun(
        "^(?:time is |time does |time will |when is |when does |when will |the )*(?:the )?(?:next "
        ")?(?:sunrise|sunset|sun rises?|sun sets?|sun (?:go|goes) down|sun (?:come|comes) up|dawn|dusk|time of "
        "(?:sunset|sunrise)|moonrise)(?: time)?(?: be| today| tomorrow| tonight| at| is it)*(?: in .+)?$");
    static const Pattern holiday("^(?:when (?:is|are|will be) |day is )?(?:the |a )?(?:next |upcoming "
                                 ")?(?:bank|public|national|school|federal) holidays?(?: day)?$");
    if (sun.find(phrase))
        return "I can't tell when the sun rises or sets: that depends on where exactly you are, which I do not know.";
    if (holiday.find(phrase))
        return "Such holidays differ from place to place, and I keep no list of them. I know days by their names: ask "
               "me when Easter Monday is.";
    return std::nullopt;
}

} // namespace

std::optional<std::string> DayQuestions::answer(
    const std::string& phrase, const std::string& core, const LocalTime& around)
{
    if (phrase == "today" && RequestText::phrase(core).starts_with("what"))
        return today("date", around);
    for (const auto reader : {today, NearDays::isWeekday, NearDays::date, DayMarks::answer, weekdayOf,
             DayCounts::answer, YearQuestions::answer, SeasonQuestions::answer}) {
        if (auto said = reader(phrase, around))
            return said;
    }
    if (auto said = dateOf(phrase, core, around))
        return said;
    if (auto said = daysUntil(phrase, core, around))
        return said;
    return cannotTell(phrase);
}

} // namespace quorvell
