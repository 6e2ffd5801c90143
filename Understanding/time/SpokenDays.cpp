// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenDays.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenHours.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPeriod.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr std::chrono::days lookAhead{31};

struct PartOfDay {
    std::string_view name;
    int from; ///< Minutes of the day.
    int to;
};

constexpr int hour = 60;
constexpr int lastMinute = 24 * hour - 1;
constexpr std::array partsOfDay{PartOfDay{"morning", 5 * hour, 12 * hour}, PartOfDay{"afternoon", 12 * hour, 18 * hour},
    PartOfDay{"evening", 18 * hour, lastMinute}, PartOfDay{"night", 18 * hour, lastMinute}};

DateParts dayAfter(int days, const LocalTime& around)
{
    return DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(days)), around.calendar);
}

DateParts atMinute(DateParts day, int minute)
{
    day.allDay = false;
    return day.adding(minute);
}

/// The part of the day at the end of the words, which it takes away.
const PartOfDay* takePart(std::string& words)
{
    static const Pattern part(
        "(?:^|\\s+)(?:this |in the |at |my )?(morning|afternoon|evening|night)$|(?<=^to)night$", Pattern::caseless);
    const auto match = part.find(words);
    if (!match)
        return nullptr;
    const std::string name = match->texts[0].empty() ? "night" : match->texts[0];
    words = trimmed(words.substr(0, match->range.start));
    if (words == "to" || words == "for to")
        words = "today";
    const auto row = std::ranges::find(partsOfDay, name, &PartOfDay::name);
    return row != partsOfDay.end() ? row : nullptr;
}

bool isOver(const PartOfDay& part, const LocalTime& around)
{
    const CalendarParts now = around.calendar.parts(around.now);
    return now.hour * hour + now.minute >= part.to;
}

std::optional<SpokenStretch> readDay(std::string_view words, const LocalTime& around)
{
    const auto day = SpokenDays::read(words, around);
    return day ? std::optional(SpokenStretch{day->from, day->to, day->words}) : std::nullopt;
}

} // namespace

std::optional<SpokenDays> SpokenDays::read(std::string_view spoken, const LocalTime& around)
{
    static const Pattern lead("^(?:for|of|in)\\s+(?!the (?:morning|afternoon|evening)$)", Pattern::caseless);
    std::string words = lead.replaceAll(trimmed(spoken), "");
    auto stretch = spokenPeriod(spoken, around);
    if (!stretch)
        stretch = spokenHours(words, around, readDay);
    if (stretch)
        return SpokenDays{stretch->from, stretch->to, stretch->words};
    // "On friday at", of "on friday at 3 pm", is not all that was said of the time.
    static const Pattern goesOn(
        "\\b(?:at|on|by|from|to|in|of|for|and|or|after|before|until|till|between|around|about|over"
        "|the|an?|every|past)$",
        Pattern::caseless);
    if (goesOn.find(words))
        return std::nullopt;
    const std::string named = words;
    const PartOfDay* part = takePart(words);
    const bool isNextPart = words.empty() && part; // "In the morning", said after noon, is tomorrow's.
    if (isNextPart)
        words = isOver(*part, around) && !named.starts_with("this") ? "tomorrow" : "today";
    static const Pattern today(
        "^(?:today|now|my (?:whole )?day|the day(?: ahead)?|the rest of (?:the|my) day)$", Pattern::caseless);
    DateParts day;
    static const Pattern asDay("^(?:(?:my|the) (?:whole )?day|now)\\b", Pattern::caseless);
    if (today.find(words)) {
        day = dayAfter(0, around);
        if (!part && asDay.find(words))
            return SpokenDays{day, day, "today"};
    } else {
        const auto phrase = SpokenPhrase::read(words, around);
        if (!phrase || phrase->hasTime || !phrase->task.empty() || phrase->repeatRule)
            return std::nullopt;
        day = DateParts::fromDay(phrase->date, around.calendar);
        // Of what had to be worked out, or was misspelt, the day itself says more.
        static const Pattern plain(
            "^(?:on |this |next |the |coming |tomorrow|tmrw|today|tonight|\\d{1,2}(?:st|nd|rd|th)? "
            "|(?:of )?"
                + std::string(TimeVocabulary::weekday)
                + "|(?:of )?(?:january|february|march|april|may|june|july|august|september|october|november|december)"
                  "|\\d{1,2}(?:st|nd|rd|th)|\\d{4}|day after|[ ,])+$",
            Pattern::caseless);
        if (!plain.find(named) && !part)
            return SpokenDays{day, day, SpokenWhen::on(SpokenWhen::dateSeenFrom(day, around))};
    }
    if (!part)
        return SpokenDays{day, day, named};
    const bool isTomorrow = isNextPart && words == "tomorrow";
    return SpokenDays{atMinute(day, part->from), atMinute(day, part->to),
        isTomorrow                     ? "tomorrow " + std::string(part->name)
            : named.starts_with("my ") ? "this " + std::string(part->name)
                                       : named};
}

namespace {

/// "The first" of "the first thing tomorrow" is no day of the month.
bool isPlaceOfThing(const RequestWords& words, std::size_t start, std::size_t end)
{
    static const Pattern place("^(?:on |for )?(?:the )?(?:first|second|third|last|next)$", Pattern::caseless);
    static const Pattern behind(
        "^(?:of|at|on|in|to|from|and|or|for|by|is|was|please|remind|i|we|free|around|about)$", Pattern::caseless);
    return end < words.size() && place.find(words.said(start, end)) && !TimeVocabulary::mayBeTime(words, end, end + 1)
        && !behind.find(words.said(end, end + 1));
}

} // namespace

std::optional<SpokenDays> SpokenDays::find(std::string_view said, const LocalTime& around, std::string& others)
{
    const RequestWords words(said);
    constexpr std::size_t mostRead = 40; // Words; whoever tells a story asks about no day.
    const std::size_t count = std::min(words.size(), mostRead);
    for (std::size_t length = std::min(count, TimeVocabulary::longest); length > 0; --length) {
        for (std::size_t start = 0; start + length <= count; ++start) {
            auto days =
                TimeVocabulary::mayBeTime(words, start, start + length) && !isPlaceOfThing(words, start, start + length)
                ? read(words.said(start, start + length), around)
                : std::nullopt;
            if (!days)
                continue;
            others = trimmed(words.said(0, start) + " " + words.said(start + length, words.size()));
            return days;
        }
    }
    others = words.said();
    return std::nullopt;
}

std::optional<SpokenDays> SpokenDays::findMoment(std::string_view said, const LocalTime& around, std::string& others)
{
    const auto moment = SpokenMoment::read(said, around);
    if (!moment || moment->date.allDay || !moment->repeat.empty())
        return std::nullopt;
    std::string rest;
    const auto named = find(said, around, rest);
    const auto clock = SpokenPhrase::read(rest, around); // "Friday afternoon" alone names no hour.
    if (!clock || !clock->hasTime)
        return std::nullopt;
    const bool isOfToday = moment->date.wholeDay() == dayAfter(0, around);
    const bool isOfTomorrow = moment->date.wholeDay() == dayAfter(1, around);
    const std::string day = named && named->isOneDay() ? named->words
        : isOfToday                                    ? "today"
        : isOfTomorrow                                 ? "tomorrow"
                                                       : SpokenWhen::on(SpokenWhen::date(moment->date.wholeDay()));
    others = moment->rest;
    return SpokenDays{moment->date, moment->date.adding(1), day + " at " + SpokenWhen::clock(moment->date)};
}

bool SpokenDays::hold(const DateParts& date) const
{
    if (date.allDay || from.allDay)
        return date.wholeDay() >= from.wholeDay() && date.wholeDay() <= to.wholeDay();
    return date >= from && date <= to;
}

SpokenDays SpokenDays::ahead(const LocalTime& around)
{
    return {dayAfter(0, around), dayAfter(static_cast<int>(lookAhead.count()), around), "in the next month"};
}

} // namespace quorvell
