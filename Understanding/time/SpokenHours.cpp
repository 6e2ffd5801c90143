// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenHours.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenWhen.h"

#include <string>

namespace quorvell {

namespace {

constexpr int minutesOfWholeDay = 24 * 60;

/// The hour that words name, in minutes of the day.
std::optional<int> minuteIn(const std::string& clock, const LocalTime& around)
{
    // Seen from midnight no hour of the day is over.
    const auto midnight = DateParts::fromDay(around.now, around.calendar).instant(around.calendar);
    const auto moment = midnight
        ? SpokenMoment::read("at " + clock, LocalTime{*midnight - std::chrono::minutes(1), around.calendar})
        : std::nullopt;
    const bool isClock =
        moment && !moment->date.allDay && moment->rest.empty() && !moment->namesDay && moment->repeat.empty();
    return isClock ? std::optional(moment->date.hour * 60 + moment->date.minute) : std::nullopt;
}

struct Span {
    int from = 0; ///< Minutes of the day.
    int to = minutesOfWholeDay - 1;
    std::string words;
};

std::string clockText(int minute)
{
    return SpokenWhen::clock(DateParts{2000, 1, 1, minute / 60, minute % 60, false});
}

/// "22:00 to 06:00", "10 pm to 6 am": ends on the next day.
bool isNight(int start, int end, const std::string& words)
{
    static const Pattern clear("\\d:\\d\\d|\\d ?[ap]\\.?m\\b|\\bmidnight\\b", Pattern::caseless);
    constexpr int evening = 18 * 60;
    constexpr int morning = 10 * 60;
    return start >= evening && end <= morning && clear.find(words);
}

/// "9 and 5": a half of the day that only the end names is that of both where the start stays before it.
std::optional<Span> between(const std::string& from, const std::string& to, const LocalTime& around)
{
    static const Pattern half("(?:\\d|\\s)([ap])\\.?m\\b", Pattern::caseless);
    const auto end = minuteIn(to, around);
    const auto ofEnd = half.find(to);
    auto start = ofEnd && !half.find(from) ? minuteIn(from + " " + ofEnd->texts[0] + "m", around) : std::nullopt;
    if (!start || !end || *start >= *end)
        start = minuteIn(from, around);
    if (start && end && isNight(*start, *end, from + " " + to))
        return Span{*start, *end + minutesOfWholeDay, "from " + clockText(*start) + " to " + clockText(*end)};
    if (!start || !end || *start >= *end)
        return std::nullopt;
    return Span{*start, *end, "between " + clockText(*start) + " and " + clockText(*end)};
}

std::optional<Span> spanIn(const std::string& words, const LocalTime& around)
{
    static const Pattern two("^(?:between|from) (.+?)(?: (?:and|to|till|until) | ?[-–] ?)(.+)$", Pattern::caseless);
    static const Pattern one(
        "^(?:(after|from|past|any ?time after)|(?:before|until|till|up to|any ?time before)) (.+?)(?: onwards?| on)?$",
        Pattern::caseless);
    // "2 to 4" beside a day, "10:30-11:15".
    static const Pattern bare(
        "^(?:at )?(\\d{1,2}(?:[:.]\\d\\d)?(?: ?[ap]\\.?m\\.?)?|noon)(?: (?:to|till|until) | ?[-–] ?)"
        "(\\d{1,2}(?:[:.]\\d\\d)?(?: ?[ap]\\.?m\\.?)?|noon|midnight)$",
        Pattern::caseless);
    for (const Pattern* form : {&two, &bare})
        if (const auto match = form->find(words))
            return between(trimmed(match->texts[0]), trimmed(match->texts[1]), around);
    const auto match = one.find(words);
    const auto minute = match ? minuteIn(trimmed(match->texts[1]), around) : std::nullopt;
    if (!minute)
        return std::nullopt;
    return match->groups[0] ? Span{*minute, minutesOfWholeDay - 1, "after " + clockText(*minute)}
                            : Span{0, *minute, "before " + clockText(*minute)};
}

DateParts atMinuteOf(DateParts day, int minute)
{
    day.allDay = false;
    return day.adding(minute);
}

SpokenStretch onDay(const DateParts& day, const Span& span, const std::string& words)
{
    return {atMinuteOf(day, span.from), atMinuteOf(day, span.to), words + " " + span.words};
}

/// Without a day: today, unless these hours are over.
SpokenStretch onNextDay(const Span& span, const LocalTime& around)
{
    const CalendarParts now = around.calendar.parts(around.now);
    const bool isOver = now.hour * 60 + now.minute >= span.to;
    const Instant day = isOver ? around.calendar.addingDays(around.now, std::chrono::days(1)) : around.now;
    return onDay(DateParts::fromDay(day, around.calendar), span, isOver ? "tomorrow" : "today");
}

} // namespace

std::optional<SpokenStretch> spokenHours(
    std::string_view spoken, const LocalTime& around, SpokenStretch::DayReader readDay)
{
    // "From three to five" is no clock yet: it must not become 4:57.
    static const Pattern bound("\\b(?:between|from|after|before|until|till|past|up to)\\b", Pattern::caseless);
    static const Pattern bare(
        "(?:^|(?<=\\s))\\d{1,2}(?:[:.]\\d\\d)?(?: ?[ap]\\.?m\\.?)?(?: (?:to|till|until) | ?[-–] ?)(?:\\d|noon)",
        Pattern::caseless);
    const std::string words = trimmed(spoken);
    auto match = bare.find(words);
    const auto led = bound.find(words);
    if (!match || (led && led->range.start < match->range.start))
        match = led;
    if (!match)
        return std::nullopt;
    // "2 to 4" alone is no stretch of hours: it may be a count, a score or a date.
    const bool isBareAlone = !led && match->range.start == 0;
    if (match->range.start > 0) { // "Tomorrow between 9 and 10".
        const auto span = spanIn(words.substr(match->range.start), around);
        const auto day =
            span ? readDay(trimmed(words.substr(0, match->range.start), ","), around) : std::optional<SpokenStretch>();
        return day && day->from.wholeDay() == day->to.wholeDay()
            ? std::optional(onDay(day->from.wholeDay(), *span, day->words))
            : std::nullopt;
    }
    static const Pattern clear("\\d:\\d\\d|[ap]\\.?m\\b", Pattern::caseless);
    if (const auto span = isBareAlone && !clear.find(words) ? std::nullopt : spanIn(words, around))
        return onNextDay(*span, around);
    for (auto space = words.find(' '); space != std::string::npos; space = words.find(' ', space + 1)) {
        const auto span = spanIn(words.substr(0, space), around);
        const auto day = span ? readDay(words.substr(space + 1), around) : std::optional<SpokenStretch>();
        if (day && day->from.wholeDay() == day->to.wholeDay())
            return onDay(day->from.wholeDay(), *span, day->words);
    }
    return std::nullopt;
}

} // namespace quorvell
