// SPDX-License-Identifier: MIT
// What stands for lengths, repetitions and ranges is taken out of the words one after the other; the rest has to be one
// moment and a title. Where it says more of a time than that, the day is left open, so that it is asked for.
#include "Understanding/skills/calendar/EventWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenRepeat.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <cctype>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr int minutesOfHour = 60;
const std::string monthName(
    "(?:january|february|march|april|may|june|july|august|september|october|november|december)");

/// The half of the day of a start that has none, where the end is in `half`: "from 11 to 1 pm" begins in the morning.
std::string halfOfStart(const std::string& start, const std::string& end, const std::string& half)
{
    constexpr int halfDay = 12;
    const int from = std::atoi(start.c_str()) % halfDay;
    const int to = std::atoi(end.c_str()) % halfDay;
    const bool areNumbers = std::isdigit(static_cast<unsigned char>(start.front())) != 0
        && std::isdigit(static_cast<unsigned char>(end.front())) != 0;
    if (half.empty() || !areNumbers || from <= to)
        return half;
    return half.front() == 'p' || half.front() == 'P' ? "am" : "pm";
}

/// "from 2 to 4 pm", "between 2 and 4 pm": becomes "at 2 pm", and the end apart.
std::string takeEnd(std::string& words)
{
    static const std::string clock =
        "((?:half past |quarter (?:past|to) )?(?:\\d{1,2}(?::\\d{2})?|one|two|three|four|five|six"
        "|seven|eight|nine|ten|eleven|twelve))(?: ?([ap]\\.?m\\.?))?";
    static const Pattern span(
        "\\b(?:from|between) " + clock + " (?:to|till|until|and) " + clock + "(?![\\w:])", Pattern::caseless);
    const auto match = span.find(words);
    if (!match)
        return {};
    const std::string half =
        match->texts[1].empty() ? halfOfStart(match->texts[0], match->texts[2], match->texts[3]) : match->texts[1];
    const std::string end = "at " + match->texts[2] + (match->texts[3].empty() ? "" : " " + match->texts[3]);
    words = words.substr(0, match->range.start) + "at " + match->texts[0] + (half.empty() ? "" : " " + half)
        + words.substr(match->range.end);
    return end;
}

/// The time of `end` on the day of `start`, or in the night behind it; nothing when it would lie far from it.
std::optional<DateParts> endOn(const DateParts& start, const std::string& endWords, const LocalTime& around)
{
    const auto end = SpokenMoment::read(endWords, around);
    if (!end || end->date.allDay || start.allDay)
        return std::nullopt;
    DateParts date = start;
    date.hour = end->date.hour;
    date.minute = end->date.minute;
    constexpr int minutesOfDay = 24 * minutesOfHour;
    constexpr int longestNight = 10 * minutesOfHour;
    if (date > start)
        return date;
    const DateParts nextDay = date.adding(minutesOfDay);
    return start.adding(longestNight) > nextDay ? std::optional(nextDay) : std::nullopt;
}

struct Days {
    DateParts first{};
    DateParts last{};
};

std::optional<DateParts> dayIn(const std::string& words, const LocalTime& around)
{
    const bool isNamedDay = words.find_first_of("0123456789") != std::string::npos;
    const auto moment = SpokenMoment::read((isNamedDay ? "on " : "") + words, around);
    const bool isDay = moment && moment->date.allDay && moment->rest.empty() && moment->repeat.empty();
    return isDay ? std::optional(moment->date) : std::nullopt;
}

/// "From friday to sunday", "the 10th to the 14th of december". The last day is the next of that name behind the first.
std::optional<Days> takeDays(std::string& words, const LocalTime& around)
{
    static const std::string day = "(today|tomorrow|(?:next |this )?" + std::string(TimeVocabulary::weekday)
        + "|(?:the )?\\d{1,2}(?:st|nd|rd|th)(?: (?:of )?" + monthName + ")?|\\d{1,2} " + monthName + "|" + monthName
        + " \\d{1,2}(?:st|nd|rd|th)?)";
    static const Pattern range(
        "\\b(?:from )?" + day + " (?:to|till|until|through) " + day + "(?![\\w'’])", Pattern::caseless);
    static const Pattern named(monthName, Pattern::caseless);
    static const Pattern number("\\d");
    // "From 10 to 14 december": that is no hour.
    static const Pattern bare(
        "\\b(?:from |between )(\\d{1,2}) (?:to|till|until|through|and) (?=\\d{1,2}(?:st|nd|rd|th)? (?:of )?" + monthName
            + "\\b)",
        Pattern::caseless);
    if (const auto first = bare.find(words))
        words = words.substr(0, first->range.start) + "from the " + first->texts[0] + "th to "
            + words.substr(first->range.end);
    const auto match = range.find(words);
    if (!match)
        return std::nullopt;
    const auto monthOfLast = named.find(match->texts[1]);
    const bool takesMonth = monthOfLast && number.find(match->texts[0]) && !named.find(match->texts[0]);
    const std::string said = match->texts[1];
    const std::string of = takesMonth
        ? " of " + said.substr(monthOfLast->range.start, monthOfLast->range.end - monthOfLast->range.start)
        : "";
    const auto first = dayIn(match->texts[0] + of, around);
    const auto begin = first ? first->instant(around.calendar) : std::nullopt;
    const auto last = begin ? dayIn(said, LocalTime{*begin, around.calendar}) : std::nullopt;
    if (!last || !(*last > *first))
        return std::nullopt;
    words = RequestText::without(words, match->range);
    return Days{*first, *last};
}

/// "for two hours", "a 30 minute call".
void takeLength(std::string& words, EventWords& event)
{
    static const Pattern lasting(
        "\\b(?:for|lasting)\\s+(?=(?:an?|one|half|\\d+|three)\\b.*\\b(?:hours?|minutes?)\\b)", Pattern::caseless);
    static const Pattern before(
        "(?<!\\bin )(?<!\\bin an? )\\b(?:\\d{1,3}|one|half|half an)[ -](?:minute|min|hour)(?: long)?"
        " (?!before|after|later|from|earlier|ahead|prior|ago|at|on)[a-z]",
        Pattern::caseless);
    if (!lasting.find(words) && !before.find(words))
        return;
    if (const auto length = SpokenLength::read(words)) {
        event.minutes = length->minutes;
        words = length->rest;
    }
}

std::string titleFrom(const std::string& words)
{
    static const Pattern edges(
        "^(?:(?:an?|the|my|for|called|named|about|with the title|(?:i|we)(?:['’]ve| have)(?: "
        "got| been (?:invited|asked) to)?|there['’]?s|there is|been (?:invited|asked) to"
        "|that|this|it)\\s+)+|\\s+(?:for|on|at|in|from|of|is|was|are|will be|is set|is scheduled)$"
        "|\\s*,\\s*(?:an?|the)$",
        Pattern::caseless);
    // "I forgot to put lunch": what they did not do is no part of the name.
    static const Pattern undone(
        "^(?:i |we )?(?:forgot|have forgotten|did not|didn['’]?t|never|meant|wanted|might|may)\\b(?: to)?"
        " (?:put|add|enter|schedule|book)\\s+",
        Pattern::caseless);
    static const Pattern slot("\\s+(?:time )?down$|(?<=meeting|appointment) time$", Pattern::caseless);
    constexpr std::string_view signs = ",.:;\"“”‘’ ";
    std::string name = undone.replaceAll(trimmed(words, ",.:;\"“”"), "");
    name = trimmed(slot.replaceAll(edges.replaceAll(name, ""), ""), ",.:; ");
    const bool isQuoted = name.size() > 2 && name.front() == '\'' && name.back() == '\'';
    return withUpperCaseFirst(trimmed(isQuoted ? name.substr(1, name.size() - 2) : name, signs));
}

/// The only hour in words whose day is not clear; nothing for "at 8 am and 8 pm" and "before 1 pm".
std::optional<DateParts> clearClock(const std::string& words, const LocalTime& around)
{
    static const Pattern clock(
        "(\\b(?:before|after|until|till|by|between|from|or|and|to) )?\\b(?:\\d{1,2}(?::\\d{2})? ?[ap]\\.?m\\b|"
        "\\d{1,2}:\\d{2}|noon\\b|midday\\b)",
        Pattern::caseless);
    const auto matches = clock.findAll(words);
    if (matches.size() != 1 || !matches.front().texts[0].empty())
        return std::nullopt;
    const TextRange range = matches.front().range;
    const auto moment = SpokenMoment::read("at " + words.substr(range.start, range.end - range.start), around);
    return moment && !moment->date.allDay ? std::optional(moment->date) : std::nullopt;
}

/// "Next week" is no day.
bool isVague(const std::string& words)
{
    static const Pattern vague(
        "\\b(?:next|this|the coming|some|any) (?:week|month|year)\\b|\\bsome ?(?:time|day)\\b|\\bone day\\b|"
        "\\bin (?:a|the) (?:week|month)s?\\b",
        Pattern::caseless);
    static const Pattern exact(
        "\\d|\\b" + std::string(TimeVocabulary::weekday) + "\\b|\\b(?:today|tomorrow|first|last|end|same)\\b",
        Pattern::caseless);
    return vague.find(words) && !exact.find(words);
}

/// Dinner is in the evening and breakfast in the morning, where no half of the day was named.
void settleHalfOfDay(EventWords& event, const std::string& words)
{
    static const Pattern half(
        "\\b\\d{1,2}(?::\\d{2})? ?[ap]\\.?m\\b|\\b(?:morning|afternoon|evening|night|tonight|noon|midday|midnight)\\b|"
        "\\b(?:0\\d|1[3-9]|2[0-3]):\\d{2}\\b",
        Pattern::caseless);
    static const Pattern late(
        "\\b(?:dinner|supper|drinks|party|concert|movie|theat(?:er|re)|opera|cocktails)\\b", Pattern::caseless);
    static const Pattern early("\\bbreakfast\\b", Pattern::caseless);
    constexpr int halfDay = 12;
    constexpr int firstLateHour = 4;
    constexpr int firstEarlyHour = 16; ///< Four in the afternoon: said as four.
    if (!event.start || event.start->allDay || half.find(words))
        return;
    DateParts& start = *event.start;
    if (late.find(event.title) && start.hour >= firstLateHour && start.hour < halfDay)
        start.hour += halfDay;
    else if (early.find(event.title) && start.hour >= firstEarlyHour)
        start.hour -= halfDay;
}

/// "Friday evening" without an hour, as far as the part of the day is not in the title.
bool isOnlyPartOfDay(const EventWords& event, const std::string& words)
{
    static const Pattern part("\\b(?:morning|afternoon|evening|night|tonight)\\b", Pattern::caseless);
    static const Pattern date("\\b\\d{1,2}(?:st|nd|rd|th)\\b|\\b(?:19|20)\\d{2}(?:-\\d{2}-\\d{2})?\\b|\\b" + monthName
            + " \\d{1,2}\\b(?![:.]\\d)|\\b\\d{1,2} (?:of )?" + monthName + "\\b",
        Pattern::caseless);
    static const Pattern clock("\\d|\\b(?:noon|midday|midnight|lunch ?time|o['’]?clock|sunrise|sunset|(?:half|quarter) "
                               "(?:past|to)|in an? )\\b",
        Pattern::caseless);
    const bool isOfTime = part.findAll(words).size() > part.findAll(event.title).size();
    return event.start && !event.start->allDay && isOfTime && !clock.find(date.replaceAll(words, " "));
}

/// "Saturday the 27th" where that is a Friday: the date, and the weekday of that name that is nearest to it.
std::vector<DateParts> contraryDays(const std::string& words, const LocalTime& around)
{
    constexpr int daysOfWeek = 7;
    static const std::string weekday = "(" + std::string(TimeVocabulary::weekday) + ")";
    static const std::string date = "((?:the )?\\d{1,2}(?:st|nd|rd|th)(?: (?:of )?" + monthName + ")?|\\d{1,2} "
        + monthName + "|" + monthName + " (?:the )?\\d{1,2}(?:st|nd|rd|th)?)";
    static const Pattern named(weekday + ",? (?:on )?" + date + "(?![\\w:])", Pattern::caseless);
    static const Pattern turned(date + ",? (?:on )?(?:an? )?" + weekday + "\\b", Pattern::caseless);
    const auto first = named.find(words);
    const auto second = first ? std::nullopt : turned.find(words);
    if (!first && !second)
        return {};
    const auto day = dayIn(first ? first->texts[1] : second->texts[0], around);
    const auto coming = dayIn(first ? first->texts[0] : second->texts[1], around);
    const auto dayInstant = day ? day->instant(around.calendar) : std::nullopt;
    const auto comingInstant = coming ? coming->instant(around.calendar) : std::nullopt;
    if (!dayInstant || !comingInstant)
        return {};
    const int apart = around.calendar.parts(*comingInstant).weekday - around.calendar.parts(*dayInstant).weekday;
    const int ahead = (apart + daysOfWeek) % daysOfWeek;
    if (ahead == 0)
        return {};
    const int nearest = ahead > daysOfWeek / 2 ? ahead - daysOfWeek : ahead;
    const auto shifted = around.calendar.addingDays(*dayInstant, std::chrono::days(nearest));
    return {*day, DateParts::fromDay(shifted, around.calendar)};
}

int minutesBetween(const DateParts& start, const DateParts& end)
{
    constexpr int minutesOfDay = 24 * minutesOfHour;
    const int minutes = (end.hour - start.hour) * minutesOfHour + end.minute - start.minute;
    return minutes > 0 ? minutes : minutes + minutesOfDay;
}

bool speaksOfTime(const std::string& words, const LocalTime& around)
{
    return RequestWords(SpokenMoment::wordsBeside(words, around)).size() < RequestWords(words).size();
}

/// Where the words name no moment, or not clearly.
void leaveOpen(EventWords& event, const std::string& words, const std::string& endWords, const LocalTime& around)
{
    event.isTimeUnclear = speaksOfTime(words, around);
    event.title = titleFrom(event.isTimeUnclear ? SpokenMoment::wordsBeside(words, around) : words);
    event.clock = clearClock(words, around);
    event.contraryDays = contraryDays(words, around);
    const auto end = event.clock && !endWords.empty() ? endOn(*event.clock, endWords, around) : std::nullopt;
    if (end)
        event.minutes = minutesBetween(*event.clock, *end);
}

} // namespace

EventWords EventWords::read(std::string words, const LocalTime& around)
{
    static const Pattern place(
        "\\b(?:in|into|to|on|onto)(?: my| the| our)?(?: (?:work|family|personal|own|google|phone))? "
        "(?:calendars?|diary|agenda|planner)\\b",
        Pattern::caseless);
    EventWords event;
    words = SpokenPhrase::withDigits(place.replaceAll(words, " "));
    takeLength(words, event);
    const auto repeat = SpokenRepeat::read(words);
    if (repeat) {
        event.repeat = repeat->stored;
        event.isRepeatUnknown = repeat->stored.empty();
        words = repeat->rest;
    }
    std::string named = words;
    if (const auto days = takeDays(named, around); days && !speaksOfTime(named, around)) {
        event.start = days->first;
        event.end = days->last;
        event.title = titleFrom(named);
        return event;
    }
    const std::string endWords = takeEnd(words);
    auto moment = SpokenMoment::read(words, around);
    if (moment && isVague(words))
        moment.reset();
    if (!moment) {
        leaveOpen(event, words, endWords, around);
        return event;
    }
    event.start = moment->date;
    event.repeat = repeat ? repeat->stored : moment->repeat;
    event.title = titleFrom(moment->rest);
    if (endWords.empty())
        settleHalfOfDay(event, words);
    event.isPartOfDay = isOnlyPartOfDay(event, words);
    event.end = endWords.empty() ? std::nullopt : endOn(moment->date, endWords, around);
    return event;
}

} // namespace quorvell
