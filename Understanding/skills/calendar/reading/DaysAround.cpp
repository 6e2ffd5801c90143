// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/DaysAround.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace quorvell {

namespace {

/// The latest one before today.
SpokenDays lastWeekday(const std::string& name, std::string& words, const TextRange& range, const LocalTime& around)
{
    constexpr std::array names{"sun", "mon", "tues", "wednes", "thurs", "fri", "satur"};
    constexpr int daysOfWeek = 7;
    const auto wanted = static_cast<int>(std::ranges::find(names, name) - names.begin()) + 1;
    const int apart = (around.calendar.parts(around.now).weekday - wanted + daysOfWeek) % daysOfWeek;
    const int days = apart == 0 ? daysOfWeek : apart;
    const auto day =
        DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(-days)), around.calendar);
    words = RequestText::without(words, range);
    return {day, day, "last " + name + "day"};
}

} // namespace

std::optional<SpokenDays> DaysAround::takePast(std::string& words, const LocalTime& around)
{
    static const Pattern over(
        "(?:\\b(?:on|from|of|for|in|the) )*\\b(?:(the day before )?yesterday(?: (?:morning|afternoon|evening|night))?"
        "|last (night)|(?:last|past|previous) (week|month|weekend)"
        "|(?:last|past|previous) (mon|tues|wednes|thurs|fri|satur|sun)day)\\b");
    const auto match = over.find(words);
    if (!match)
        return std::nullopt;
    const auto day = [&](int days) {
        return DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(days)), around.calendar);
    };
    constexpr int daysOfWeek = 7;
    constexpr int daysOfMonth = 31;
    if (!match->texts[3].empty())
        return lastWeekday(match->texts[3], words, match->range, around);
    const int sinceMonday = (around.calendar.parts(around.now).weekday + 5) % daysOfWeek;
    const std::string& span = match->texts[2];
    SpokenDays days{day(-1), day(-1), "yesterday"};
    if (!match->texts[0].empty())
        days = {day(-2), day(-2), "the day before yesterday"};
    else if (span == "week")
        days = {day(-sinceMonday - daysOfWeek), day(-sinceMonday - 1), "last week"};
    else if (span == "weekend")
        days = {day(-sinceMonday - 2), day(-sinceMonday - 1), "last weekend"};
    else if (span == "month")
        days = {day(-daysOfMonth), day(-1), "in the last month"};
    words = RequestText::without(words, match->range);
    return days;
}

std::optional<SpokenDays> DaysAround::takeBounded(std::string& words, const LocalTime& around)
{
    static const Pattern form(
        "(?<!\\bday )\\b(after|since|before|until|till) ((?:next |this )?(?:tomorrow|(?:mon|tues|wednes|"
        "thurs|fri|satur|sun)day)|the \\d{1,2}(?:st|nd|rd|th))$");
    const auto match = form.find(words);
    const auto day = match ? SpokenDays::read(match->texts[1], around) : std::nullopt;
    const auto noon = [](DateParts parts) {
        parts.allDay = false;
        parts.hour = 12;
        return parts;
    };
    constexpr int minutesOfDay = 24 * 60;
    constexpr int daysOfMonth = 31;
    if (!day || !day->isOneDay() || !day->from.allDay)
        return std::nullopt;
    const bool isAfter = match->texts[0] == "after" || match->texts[0] == "since";
    const bool isBefore = match->texts[0] == "before";
    const DateParts bound = noon(day->from);
    const DateParts today = DateParts::fromDay(around.now, around.calendar);
    words = trimmed(words.substr(0, match->range.start));
    const std::string said = match->texts[0] + " " + SpokenWhen::date(day->from);
    if (isAfter)
        return SpokenDays{bound.adding(match->texts[0] == "after" ? minutesOfDay : 0).wholeDay(),
            bound.adding(daysOfMonth * minutesOfDay).wholeDay(), said};
    return SpokenDays{today, bound.adding(isBefore ? -minutesOfDay : 0).wholeDay(), said};
}

} // namespace quorvell
