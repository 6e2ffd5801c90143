// SPDX-License-Identifier: MIT
// What stands for lengths, repetitions and ranges is taken out of the words one after the other; the rest has to be one
// moment and a title. Where it says more of a time than that, the day is left open, so that it is asked for.
#include "Understanding/skills/calendar/reading/EventWords.h"

#include "QuorvellCore/reminders/request/RuleStart.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/reading/EventRepeat.h"
#include "Understanding/skills/calendar/reading/EventSpan.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenRepeat.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <array>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr int minutesOfHour = 60;
const std::string& monthName = EventSpan::monthName;

/// "for two hours", "a 30 minute call".
void takeLength(std::string& words, EventWords& event)
{
    static const Pattern lasting(
        "\\b(?:for|lasting)\\s+(?=(?:an?|one|half|\\d+|three)\\b.*\\b(?:hours?|minutes?)\\b)", Pattern::caseless);
    static const Pattern before(
        "^(?:\\d{1,3}|an?|one|two|half an) (?:minutes?|mins|hours?) (?:with|of|for)\\b"
        "|(?<!\\bin )(?<!\\bin an? )\\b(?:\\d{1,3}|one|half|half an)[ -](?:minute|min|hour)(?: long)?"
        " (?!before|after|later|from|earlier|ahead|prior|ago|at|on)[a-z]",
        Pattern::caseless);
    const auto length =
        lasting.find(words) || before.find(words) ? SpokenLength::read(words) : SpokenLength::ofThing(words);
    if (length) {
        event.minutes = length->minutes;
        words = length->rest;
    }
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
bool namesNoDay(const std::string& words)
{
    static const Pattern vague(
        "\\b(?:next|this|the coming|some|any) (?:week|weekend|month|year)\\b|\\bsome ?(?:time|day)\\b|\\bone day\\b|"
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
        "\\b(?:dinner|supper|drinks|party|concert|movie|theat(?:er|re)|opera|cocktails|date)\\b", Pattern::caseless);
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
        return SpokenMoment::eitherDay(words, around);
    const auto day = EventSpan::dayIn(first ? first->texts[1] : second->texts[0], around);
    const auto coming = EventSpan::dayIn(first ? first->texts[0] : second->texts[1], around);
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

/// "Every monday wednesday and friday", typed in haste.
std::string withCommas(std::string words)
{
    static const Pattern each("\\b(?:every|each)\\b", Pattern::caseless);
    static const Pattern two(
        "(" + std::string(TimeVocabulary::weekday) + ") (?=" + std::string(TimeVocabulary::weekday) + "\\b)",
        Pattern::caseless);
    while (const auto match = each.find(words) ? two.find(words) : std::nullopt)
        words = words.substr(0, match->range.start) + match->texts[0] + ", " + words.substr(match->range.end);
    return words;
}

/// "Until march", "for the next 5 weeks", of what comes back.
std::string takeRuleEnd(std::string& words)
{
    static const std::string month = "(?:jan|feb|mar|apr|may|jun|jul|aug|sep|oct|nov|dec)[a-z]*\\.?";
    static const Pattern rule(
        "\\b(?:every|each|daily|weekly|monthly|weekdays|(?:mon|tues|wednes|thurs|fri|satur|sun)days)\\b",
        Pattern::caseless);
    static const Pattern end(
        ",?\\s*\\b(?:(?:until|till|through|up to|ending(?: on| in)?) (?:(?:the|on) )?(?:end of (?:the )?)?(?:" + month
            + "(?: \\d{1,2}(?:st|nd|rd|th)?)?|\\d{1,2}(?:st|nd|rd|th)? (?:of )?" + month
            + "|christmas|easter|new years?(?: eve)?|(?:next |this )?(?:week|month|year|summer|semester|term)|20\\d{2})"
              "(?: 20\\d{2})?|for (?:the )?(?:(?:next|coming|following) "
              ")?(?:\\d{1,2}|two|three|four|five|six|seven|eight|"
              "nine|ten|twelve|a few|several|a couple of) (?:weeks|months|days|times))(?![\\w:])",
        Pattern::caseless);
    const auto match = rule.find(words) ? end.find(words) : std::nullopt;
    if (!match)
        return {};
    std::string said = trimmed(words.substr(match->range.start, match->range.end - match->range.start), " ,");
    words = RequestText::without(words, match->range);
    return said;
}

int minutesBetween(const DateParts& start, const DateParts& end)
{
    constexpr int minutesOfDay = 24 * minutesOfHour;
    const int minutes = (end.hour - start.hour) * minutesOfHour + end.minute - start.minute;
    return minutes > 0 ? minutes : minutes + minutesOfDay;
}

bool speaksOfAnyTime(const std::string& words, const LocalTime& around)
{
    return RequestWords(SpokenMoment::wordsBeside(words, around)).size() < RequestWords(words).size();
}

/// Where the words name no moment, or not clearly.
void leaveOpen(EventWords& event, const std::string& words, const std::string& endWords, const LocalTime& around)
{
    const bool isOfTime = speaksOfAnyTime(words, around);
    event.isVague = namesNoDay(words);
    event.isTimeUnclear = isOfTime && !event.isVague;
    event.title = EventTitle::from(isOfTime ? SpokenMoment::wordsBeside(words, around) : words, words);
    event.clock = clearClock(words, around);
    event.contraryDays = contraryDays(words, around);
    const auto end = event.clock && !endWords.empty() ? EventSpan::endOn(*event.clock, endWords, around) : std::nullopt;
    if (end)
        event.minutes = minutesBetween(*event.clock, *end);
}

/// "Parents evening", "quiz night": the part of the day belongs to the name. While the time is read it is no such word.
struct MaskedPart {
    std::string_view said;
    std::string_view masked;
};
constexpr std::array namedPartsOfEvents{MaskedPart{"evening", "qevq"}, MaskedPart{"night", "qnigq"}};

std::string withNamedPart(std::string words)
{
    static const Pattern named(
        "\\b(?:parents['’]?|parent['’]s|movie|film|date|game|games|quiz|poker|bingo|karaoke|ladies|girls|"
        "boys|wine|opening|bonfire|hen|stag|curry|pizza|music|open mic|family|info|information|"
        "elders|teachers['’]?|school|open) (?=(evening|night)\\b)",
        Pattern::caseless);
    const auto match = named.find(words);
    if (!match)
        return words;
    for (const auto& [said, masked] : namedPartsOfEvents)
        if (lowerCased(match->texts[0]) == said)
            return words.replace(match->range.end, said.size(), masked);
    return words;
}

std::string withPartShown(std::string title)
{
    for (const auto& [said, masked] : namedPartsOfEvents)
        if (const std::size_t found = title.find(masked); found != std::string::npos)
            title.replace(found, masked.size(), said);
    return title;
}

EventWords readMasked(std::string words, const LocalTime& around);

} // namespace

EventWords EventWords::read(std::string words, const LocalTime& around)
{
    EventWords event = readMasked(withNamedPart(std::move(words)), around);
    event.title = withPartShown(std::move(event.title));
    return event;
}

namespace {

EventWords readMasked(std::string words, const LocalTime& around)
{
    static const Pattern place(
        "\\b(?:in|into|to|on|onto)(?: my| the| our)?(?: (?:work|family|personal|own|google|phone))? "
        "(?:calendars?|diary|agenda|planner|schedule)\\b",
        Pattern::caseless);
    static const Pattern allDay("[,;]?\\s*\\b(?:for |as an? |an? )?(?:all|whole|entire|full)[- ]day(?: long)?\\b"
                                "|[,;]?\\s*\\bfor the (?:whole|entire|full) day\\b",
        Pattern::caseless);
    static const Pattern repeating(
        "\\b(?:repeating|recurring)\\b|\\b(?:set|make) (?:it|that|this) (?:to )?(?:repeat|recur)", Pattern::caseless);
    if (const auto start = RuleStart::find(words, around.now, around.calendar))
        return readMasked(start->words, {start->justBefore, around.calendar});
    EventWords event;
    static const Pattern wish(
        "[,;]?\\s*(?:(?:and|then|please) )*(?:set|make) (?:it|that|this) (?:to )?(?:repeat|recur)(?:ing)?$",
        Pattern::caseless);
    event.isToRepeat = repeating.find(words).has_value();
    words = wish.replaceAll(words, "");
    words = SpokenPhrase::withDigits(place.replaceAll(EventTitle::withoutForms(words), " "));
    if (const std::string timed = allDay.replaceAll(words, ""); timed != words) {
        event.isWholeDay = true;
        words = trimmed(timed);
    }
    event.ruleEnd = takeRuleEnd(words);
    takeLength(words, event);
    const auto repeat = SpokenRepeat::read(withCommas(words));
    if (repeat) {
        event.repeat = repeat->stored;
        event.isRepeatUnknown = repeat->stored.empty();
        event.isToRepeat = false;
        static const Pattern weekly(
            "\\b(?:weekly|every week|each week)\\b ?", Pattern::caseless); // "A weekly call on mondays"
        words = weekly.replaceAll(repeat->rest, "");
    }
    std::string named = words;
    if (const auto days = EventSpan::takeDays(named, around); days && !speaksOfAnyTime(named, around)) {
        event.start = days->first;
        event.end = days->last;
        event.title = EventTitle::from(named, words);
        return event;
    }
    const std::string endWords = EventSpan::takeEnd(words);
    auto moment = SpokenMoment::read(words, around);
    if (moment && namesNoDay(words))
        moment.reset();
    if (!moment) {
        leaveOpen(event, words, endWords, around);
        return event;
    }
    event.start = moment->date;
    event.repeat = repeat ? repeat->stored : moment->repeat;
    event.isToRepeat = event.isToRepeat && event.repeat.empty();
    if (!moment->namesDay)
        event.start = EventRepeat::firstFrom(*event.start, event.repeat, around);
    event.title = EventTitle::from(moment->rest, words);
    if (endWords.empty())
        settleHalfOfDay(event, words);
    static const Pattern lunchTime("\\s*\\blunch ?time$", Pattern::caseless);
    const bool isAtLunch = event.start->allDay && lunchTime.find(event.title);
    if (isAtLunch)
        event.title = lunchTime.replaceAll(event.title, "");
    event.isPartOfDay = isAtLunch || isOnlyPartOfDay(event, words);
    event.end = endWords.empty() ? std::nullopt : EventSpan::endOn(*event.start, endWords, around);
    // An end, or an hour, that was said and not understood is asked about.
    static const Pattern left("\\b(?:after|before|between|until|till|around|from) "
                              "(?:\\d|one|two|three|four|five|six|seven|eight|nine|ten|eleven|"
                              "twelve|noon|late)\\b|\\b0\\d{3}$|\\b\\d{4} "
                              "?(?:hours|hrs|h)\\b|\\b\\d{1,2}[:.]\\d{2}\\b|\\b\\d{1,2}/\\d{1,2}\\b",
        Pattern::caseless);
    const bool isEndLost = !endWords.empty() && !event.end && !event.start->allDay;
    if (isEndLost || left.find(event.title)) {
        event.start.reset();
        event.isTimeUnclear = true;
    }
    return event;
}

} // namespace

} // namespace quorvell
