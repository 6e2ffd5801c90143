// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenPeriod.h"

#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeVocabulary.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace quorvell {

namespace {

using Days = std::optional<SpokenStretch>;

constexpr int daysOfWeek = 7;

DateParts dayFromNow(int days, const LocalTime& around)
{
    return DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(days)), around.calendar);
}

/// 0 on a Monday to 6 on a Sunday.
int daysSinceMonday(const LocalTime& around)
{
    return (around.calendar.parts(around.now).weekday + 5) % daysOfWeek;
}

DateParts dateOf(LocalDay day)
{
    const std::chrono::year_month_day date(day);
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
        static_cast<int>(static_cast<unsigned>(date.day())), 0, 0, true};
}

/// Of the month in which `first` stands, `months` of them, from today where it has begun.
SpokenStretch monthsFrom(LocalDay first, int months, const std::string& words, const LocalTime& around)
{
    const std::chrono::year_month_day date(first);
    const auto next = date.year() / date.month() + std::chrono::months(months);
    const LocalDay last = LocalDay(next / std::chrono::day(1)) - std::chrono::days(1);
    const LocalDay today = around.calendar.day(around.now);
    return {dateOf(last >= today ? std::max(first, today) : first), dateOf(last), words};
}

/// On a Sunday evening the week is over for all but the calendar: "this week" is the one that begins tomorrow.
bool isWeekOver(const LocalTime& around)
{
    constexpr int sunday = 1;
    constexpr int evening = 17; // Hour of the day.
    const CalendarParts now = around.calendar.parts(around.now);
    return now.weekday == sunday && now.hour >= evening;
}

/// What a stretch may follow: "going on next week", "all of next month".
const std::string beforeStretch = "^(?:(?:for|of|in|on|over|during|throughout|all|the whole) )*";

Days week(const std::string& words, const LocalTime& around)
{
    static const Pattern current(beforeStretch
            + "(?:this|the|my|my whole|the (?:rest|remainder) of (?:the|this)|(?:the )?current) week"
              "(?: ahead)?$",
        Pattern::caseless);
    static const Pattern next(beforeStretch + "next week$", Pattern::caseless);
    static const Pattern afterNext(beforeStretch + "the week after(?: next(?: week)?)?$", Pattern::caseless);
    static const Pattern coming(beforeStretch + "(?:the|this) (?:coming|upcoming) week$", Pattern::caseless);
    static const Pattern last(beforeStretch + "last week$", Pattern::caseless);
    const int since = daysSinceMonday(around);
    if (isWeekOver(around) && current.find(words)) {
        const DateParts monday = dayFromNow(1, around);
        return SpokenStretch{monday, dayFromNow(daysOfWeek, around), "in the week from " + SpokenWhen::date(monday)};
    }
    if (current.find(words))
        return SpokenStretch{dayFromNow(0, around), dayFromNow(6 - since, around), "this week"};
    if (next.find(words))
        return SpokenStretch{dayFromNow(7 - since, around), dayFromNow(13 - since, around), "next week"};
    if (afterNext.find(words))
        return SpokenStretch{dayFromNow(14 - since, around), dayFromNow(20 - since, around), "the week after next"};
    if (coming.find(words))
        return SpokenStretch{dayFromNow(0, around), dayFromNow(daysOfWeek, around), "in the coming week"};
    if (last.find(words))
        return SpokenStretch{dayFromNow(-since - daysOfWeek, around), dayFromNow(-since - 1, around), "last week"};
    return std::nullopt;
}

/// "Next weekend" is that of next week, as "next friday" is.
Days weekend(const std::string& words, const LocalTime& around)
{
    static const Pattern form(
        "^(?:for |on |at |over |during )?(?:(?:this|the|my)(?: coming| upcoming)? |(next )|coming )?weekend(?! after)$",
        Pattern::caseless);
    static const Pattern afterNext("^(?:for |on |at |over )?the weekend after(?: next)?$", Pattern::caseless);
    const int since = daysSinceMonday(around);
    const auto match = form.find(words);
    const bool isAfterNext = afterNext.find(words).has_value();
    if (!match && !isAfterNext)
        return std::nullopt;
    const int weeks = isAfterNext ? 2 : match->groups[0] ? 1 : 0;
    if (weeks == 0 && isWeekOver(around)) {
        const DateParts saturday = dayFromNow(daysOfWeek - 1, around);
        return SpokenStretch{
            saturday, dayFromNow(daysOfWeek, around), "on the weekend of " + SpokenWhen::date(saturday)};
    }
    const int saturday = 5 - since + weeks * daysOfWeek;
    return SpokenStretch{dayFromNow(std::max(saturday, 0), around), dayFromNow(saturday + 1, around),
        weeks == 0       ? "at the weekend"
            : weeks == 1 ? "next weekend"
                         : "the weekend after next"};
}

/// "this month", "next year"
Days monthOrYear(const std::string& words, const LocalTime& around)
{
    static const Pattern form(beforeStretch
            + "(?:(?:this|my|the (?:rest|remainder) of (?:the|this)"
              "|(?:the )?current|(?:for|of|in|during) the)|(next)|(last)) (?:(month)|year)$",
        Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const std::chrono::year_month_day today(around.calendar.day(around.now));
    const bool isMonth = match->groups[2].has_value();
    const int step = match->groups[0] ? 1 : match->groups[1] ? -1 : 0;
    const auto first = isMonth ? today.year() / today.month() + std::chrono::months(step)
                               : (today.year() + std::chrono::years(step)) / std::chrono::January;
    const std::string name = step == 0 ? "this " : step > 0 ? "next " : "last ";
    return monthsFrom(
        LocalDay(first / std::chrono::day(1)), isMonth ? 1 : 12, name + (isMonth ? "month" : "year"), around);
}

/// "in march", "june 2028". "May" and "march" alone are mostly verbs.
Days namedMonth(const std::string& words, const LocalTime& around)
{
    static const Pattern form(
        "^((?:for|of|in|during|my|the month of|all of) )*(january|february|march|april|may|june|july"
        "|august|september|october|november|december)(?:,? (?:of )?(20\\d\\d))?$",
        Pattern::caseless);
    const auto match = form.find(words);
    const auto month = match ? PhraseWords::month(lowerCased(match->texts[1])) : std::nullopt;
    const bool mayBeVerb = month && (*month == 3 || *month == 5) && !match->groups[0] && !match->groups[2];
    if (!month || mayBeVerb)
        return std::nullopt;
    const std::chrono::year_month_day today(around.calendar.day(around.now));
    const std::chrono::month name(static_cast<unsigned>(*month));
    const auto year = match->groups[2] ? std::chrono::year(std::atoi(match->texts[2].c_str()))
        : name < today.month()         ? today.year() + std::chrono::years(1)
                                       : today.year();
    std::string said = "in " + withUpperCaseFirst(lowerCased(match->texts[1]));
    said += match->groups[2] ? " " + match->texts[2] : "";
    return monthsFrom(LocalDay(year / name / std::chrono::day(1)), 1, said, around);
}

/// "the next ten days", "the next few weeks"
Days comingDays(const std::string& words, const LocalTime& around)
{
    static const Pattern form("^(?:for |in |over |within |during )?(?:the )?(?:next|coming|following) "
                              "(?:(few|couple of)|(\\d{1,3})|) ?(day|week|month)s?(?: ahead)?$",
        Pattern::caseless);
    static const Pattern counted(
        "\\d|few|couple|^(?:for |in |over |within |during )?the next (?:month|day)", Pattern::caseless);
    const std::string digits = SpokenPhrase::withDigits(words);
    const auto match = form.find(digits);
    if (!match || !counted.find(digits))
        return std::nullopt;
    constexpr int daysInMonth = 30;
    const std::string unit = lowerCased(match->texts[2]);
    const int length = unit == "day" ? 1 : unit == "week" ? daysOfWeek : daysInMonth;
    const int count = match->groups[0] ? 2 : match->groups[1] ? std::atoi(match->texts[1].c_str()) : 1;
    const bool isFew = match->groups[0] && lowerCased(match->texts[0]) == "few";
    const std::string amount = match->groups[0] ? lowerCased(match->texts[0]) + " " : match->texts[1];
    return SpokenStretch{dayFromNow(0, around), dayFromNow((isFew && length > 1 ? 3 : count) * length, around),
        "in the next " + amount + (match->groups[1] ? " " : "") + unit + (match->groups[0] || count != 1 ? "s" : "")};
}

Days oneDay(const std::string& words, const LocalTime& around)
{
    static const Pattern bare("^\\d{1,2}$");
    static const Pattern dated("^\\d|^the \\d", Pattern::caseless);
    const std::string digits = SpokenPhrase::withDigits(words);
    if (bare.find(digits))
        return std::nullopt;
    const auto phrase = SpokenPhrase::read((dated.find(digits) ? "on " : "") + digits, around);
    if (!phrase || phrase->hasTime || !phrase->task.empty() || phrase->repeatRule)
        return std::nullopt;
    const DateParts day = DateParts::fromDay(phrase->date, around.calendar);
    return SpokenStretch{day, day, words};
}

/// A month that only one end of a stretch names is that of both: "june 3 to 5", "the 10th to the 14th of december".
void shareMonth(std::string& from, std::string& to)
{
    static const std::string month("(?:jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?"
                                   "|sept?(?:ember)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)");
    static const Pattern named("\\b" + month + "\\b", Pattern::caseless);
    static const Pattern number("^(?:the )?(\\d{1,2})(?:st|nd|rd|th)?$", Pattern::caseless);
    const auto ofFrom = named.find(from);
    const auto ofTo = named.find(to);
    const auto share = [](std::string& bare, const std::string& full, const PatternMatch& name) {
        if (const auto match = number.find(bare))
            bare = match->texts[0] + " " + full.substr(name.range.start, name.range.end - name.range.start);
    };
    if (ofFrom && !ofTo)
        share(to, from, *ofFrom);
    else if (ofTo && !ofFrom)
        share(from, to, *ofTo);
}

/// "from monday to wednesday", "between the 3rd and the 5th of june". The last day is the next of its name behind the
/// first.
Days stretch(const std::string& words, const LocalTime& around)
{
    static const Pattern form("^(?:from |for |on )?(.+?)(?: (?:to|till|until|through|thru) | ?[-–] ?)(?:the )?(.+)$"
                              "|^between (.+?) and (?:the )?(.+)$",
        Pattern::caseless);
    const std::string digits = SpokenPhrase::withDigits(words);
    const auto match = form.find(digits);
    if (!match)
        return std::nullopt;
    const bool isTo = match->groups[0].has_value();
    std::string from = trimmed(match->texts[isTo ? 0 : 2]);
    std::string to = trimmed(match->texts[isTo ? 1 : 3]);
    shareMonth(from, to);
    static const Pattern ordinal("^\\d{1,2}(?:st|nd|rd|th)", Pattern::caseless);
    if (ordinal.find(to))
        to = "the " + to;
    const auto first = oneDay(from, around);
    const auto begin = first ? first->from.instant(around.calendar) : std::nullopt;
    const auto last = begin ? oneDay(to, LocalTime{*begin, around.calendar}) : std::nullopt;
    if (!last || !(last->from > first->from))
        return std::nullopt;
    static const Pattern lead("^(?:for|on) ", Pattern::caseless);
    static const Pattern led("^(?:from|between)\\b", Pattern::caseless);
    const std::string said = lead.replaceAll(words, "");
    return SpokenStretch{first->from, last->from, (led.find(said) ? "" : "from ") + said};
}

/// "in the week from Monday the 23rd", "on the weekend of the 28th".
Days weekFrom(const std::string& words, const LocalTime& around)
{
    static const Pattern form(
        "^(?:in |for |on |at |over )?the (?:(week) (?:from|starting|beginning)(?: on)?|weekend of) (.+)$",
        Pattern::caseless);
    const auto match = form.find(words);
    const auto day = match ? oneDay(match->texts[1], around) : std::nullopt;
    if (!day)
        return std::nullopt;
    constexpr std::int64_t minutesOfDay = 24 * 60;
    const int more = match->groups[0] ? daysOfWeek - 1 : 1;
    const std::string name = match->groups[0] ? "in the week from " : "on the weekend of ";
    return SpokenStretch{day->from, day->from.adding(more * minutesOfDay).wholeDay(), name + match->texts[1]};
}

/// "last friday", "last weekend", "last night".
Days goneBy(const std::string& words, const LocalTime& around)
{
    static const Pattern form(
        "^(?:on |of |over |from )?last (?:(" + std::string(TimeVocabulary::weekday) + ")|(weekend)|(night))$",
        Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const int since = daysSinceMonday(around);
    if (match->groups[1])
        return SpokenStretch{dayFromNow(-since - 2, around), dayFromNow(-since - 1, around), "last weekend"};
    if (match->groups[2]) {
        constexpr int evening = 18 * 60;
        DateParts day = dayFromNow(-1, around);
        day.allDay = false;
        return SpokenStretch{day.adding(evening), day.adding(24 * 60 - 1), "last night"};
    }
    const std::string name = lowerCased(match->texts[0]);
    const int weekday =
        static_cast<int>(std::ranges::find(PhraseWords::weekdays, name) - PhraseWords::weekdays.begin());
    const int ago = (since + 1 - weekday + daysOfWeek) % daysOfWeek; // Sunday is 0 of the names.
    const DateParts day = dayFromNow(ago == 0 ? -daysOfWeek : -ago, around);
    return SpokenStretch{day, day, "last " + withUpperCaseFirst(name)};
}

/// "until friday", "before friday": from today on. "Yesterday", too.
Days upTo(const std::string& words, const LocalTime& around)
{
    static const Pattern form("^(?:(before)|until|till|up to|through) (.+)$", Pattern::caseless);
    static const Pattern yesterday("^(?:on |of )?yesterday$", Pattern::caseless);
    if (yesterday.find(words))
        return SpokenStretch{dayFromNow(-1, around), dayFromNow(-1, around), "yesterday"};
    const auto match = form.find(words);
    const auto day = match ? oneDay(match->texts[1], around) : std::nullopt;
    if (!day)
        return std::nullopt;
    constexpr int minutesBack = 24 * 60;
    const DateParts last = match->groups[0] ? day->to.adding(-minutesBack).wholeDay() : day->to;
    const DateParts today = dayFromNow(0, around);
    return last >= today ? Days(SpokenStretch{today, last, words}) : std::nullopt;
}

} // namespace

std::optional<SpokenStretch> spokenPeriod(std::string_view spoken, const LocalTime& around)
{
    const std::string words = trimmed(spoken);
    for (const auto reader : {week, weekend, monthOrYear, namedMonth, comingDays, weekFrom, goneBy, stretch, upTo})
        if (auto days = reader(words, around))
            return days;
    return std::nullopt;
}

} // namespace quorvell
