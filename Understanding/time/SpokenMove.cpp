// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenMove.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeVocabulary.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace quorvell {

namespace {

constexpr int minutesOfDay = 24 * 60;

int minuteOf(const DateParts& parts)
{
    return parts.hour * 60 + parts.minute;
}

DateParts atClock(DateParts day, int minute)
{
    day.hour = minute / 60;
    day.minute = minute % 60;
    day.allDay = false;
    return day;
}

/// Days since an unchanging one; a whole day more than `other` is 1.
std::int64_t daysBetween(const DateParts& from, const DateParts& to, const LocalTime& around)
{
    const auto start = atClock(from, minutesOfDay / 2).instant(around.calendar);
    const auto end = atClock(to, minutesOfDay / 2).instant(around.calendar);
    return start && end ? std::chrono::round<std::chrono::days>(*end - *start).count() : 0;
}

/// "The 10th" is one of the month in which it stands already, unless that is over.
std::optional<DateParts> ofSameMonth(std::string_view timeWords, const DateParts& old, const LocalTime& around)
{
    static const Pattern ordinal("\\b(\\d{1,2})(?:st|nd|rd|th)\\b", Pattern::caseless);
    static const Pattern named("\\b(?:january|february|march|april|may|june|july|august|september|october|november"
                               "|december|jan|feb|mar|apr|jun|jul|aug|sept?|oct|nov|dec|month|next)\\b",
        Pattern::caseless);
    const auto match = ordinal.find(timeWords);
    if (!match || named.find(timeWords))
        return std::nullopt;
    DateParts day = old;
    day.day = std::atoi(match->texts[0].c_str());
    day = day.wholeDay();
    const bool isAhead = day.instant(around.calendar) && day >= DateParts::fromDay(around.now, around.calendar);
    return isAhead ? std::optional(day) : std::nullopt;
}

/// "Friday", of something that is weeks away, may as well be the Friday of that week.
std::vector<DateParts> daysMeant(
    std::string_view timeWords, const DateParts& coming, const DateParts& old, const LocalTime& around)
{
    static const Pattern bare(
        "\\b(?<!next )(?<!this )(?<!coming )" + std::string(TimeVocabulary::weekday) + "\\b(?! (?:the )?\\d)",
        Pattern::caseless);
    static const Pattern dated("\\d(?:st|nd|rd|th)\\b|\\bweeks?\\b|\\bday after\\b", Pattern::caseless);
    constexpr std::int64_t week = 7;
    const DateParts today = DateParts::fromDay(around.now, around.calendar);
    if (!bare.find(timeWords) || dated.find(timeWords) || daysBetween(today, old, around) <= week)
        return {coming};
    const auto instant = old.instant(around.calendar);
    const int oldWeekday = instant ? (around.calendar.parts(*instant).weekday + 5) % week : 0;
    const auto comingInstant = coming.instant(around.calendar);
    const int weekday = comingInstant ? (around.calendar.parts(*comingInstant).weekday + 5) % week : 0;
    const DateParts there = old.adding(static_cast<std::int64_t>(weekday - oldWeekday) * minutesOfDay).wholeDay();
    return there.wholeDay() == coming.wholeDay() ? std::vector{coming} : std::vector{coming, there};
}

/// The days that the words may mean; none where they name none.
std::vector<DateParts> daysMeant(
    const ReminderPhrase& phrase, const SpokenMoment& moment, const DateParts& old, const LocalTime& around)
{
    if (!moment.namesDay)
        return {old};
    if (const auto day = ofSameMonth(phrase.timeWords, old, around))
        return {*day};
    return daysMeant(phrase.timeWords, moment.date, old, around);
}

/// The minutes of the day that the words may mean.
std::vector<int> minutesMeant(const ReminderPhrase& phrase, const SpokenMoment& moment, const DateParts& old,
    SpokenMove::FarHour farHour, const LocalTime& around)
{
    constexpr int near = 3 * 60;
    std::vector<int> minutes;
    for (const Instant instant : phrase.alternatives)
        minutes.push_back(minuteOf(DateParts::from(instant, around.calendar)));
    minutes.push_back(minuteOf(DateParts::from(phrase.date, around.calendar)));
    std::ranges::sort(minutes);
    minutes.erase(std::unique(minutes.begin(), minutes.end()), minutes.end());
    if (minutes.size() < 2)
        return minutes;
    const auto close = std::ranges::find_if(
        minutes, [&](int minute) { return !old.allDay && std::abs(minute - minuteOf(old)) <= near; });
    if (close != minutes.end())
        return {*close};
    return farHour == SpokenMove::FarHour::isUsual ? std::vector{minuteOf(moment.date)} : minutes;
}

} // namespace

SpokenMove SpokenMove::read(std::string_view words, const DateParts& old, FarHour farHour, const LocalTime& around)
{
    const auto phrase = SpokenPhrase::read(words, around);
    const auto moment = SpokenMoment::read(words, around);
    if (!phrase || !moment)
        return {};
    static const Pattern span("^in (?!the\\b)", Pattern::caseless);
    if (span.find(phrase->timeWords))
        return {{moment->date}};
    SpokenMove move;
    for (const DateParts& day : daysMeant(*phrase, *moment, old, around)) {
        if (phrase->hasTime) {
            for (const int minute : minutesMeant(*phrase, *moment, old, farHour, around))
                move.choices.push_back(atClock(day, minute));
        } else {
            move.choices.push_back(old.allDay ? day : atClock(day, minuteOf(old)));
        }
    }
    return move;
}

bool SpokenMove::isAt(std::string_view words, const DateParts& old, const LocalTime& around)
{
    const SpokenMove move = read(words, old, FarHour::isAsked, around);
    return std::ranges::find(move.choices, old) != move.choices.end();
}

} // namespace quorvell
