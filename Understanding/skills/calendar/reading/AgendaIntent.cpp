// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/AgendaIntent.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/SeriesWords.h"
#include "Understanding/skills/calendar/reading/AgendaCues.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/time/TimeWords.h"
#include "Understanding/words/CommonCues.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = AgendaIntent::Kind;

constexpr int usualMinutes = 60;

/// What names an event: "my lunch with Ana on friday". Its day, if one is named, says where to look, and that of a
/// series this one is meant.
AgendaIntent target(Kind kind, const SeriesWords& words, const RuleSurroundings& around)
{
    static const Pattern ends("^(?:(?:my|the|our|that|this|an?|do|have|time of|start of|starting)\\s+)+|\\s+event$"
                              "|\\s*\\b(?:from|in|on) (?:my|the) (?:calendar|agenda|diary|schedule)$",
        Pattern::caseless);
    static const Pattern day("\\b(?:on|of|from|for)?\\s*((?:today|tomorrow|tonight|(?:this |next )?"
            + std::string(TimeVocabulary::weekday)
            + "|this week|next week)(?:'s|’s)?(?: (?:morning|afternoon|evening))?)\\b",
        Pattern::caseless);
    AgendaIntent intent{.kind = kind, .days = SpokenDays::ahead(around), .scope = words.scope};
    std::string name = ends.replaceAll(trimmed(words.rest), "");
    if (const auto match = day.find(name)) {
        static const Pattern possessive("['’]s\\b");
        if (auto days = SpokenDays::read(possessive.replaceAll(match->texts[0], ""), around)) {
            intent.days = std::move(days);
            if (intent.scope == Wish::Scope::open)
                intent.scope = Wish::Scope::one;
            name = trimmed(name.substr(0, match->range.start) + name.substr(match->range.end));
        }
    }
    static const Pattern pronoun("^(?:it|that|this|them)(?: one)?$", Pattern::caseless);
    intent.title = trimmed(pronoun.replaceAll(trimmed(ends.replaceAll(name, "")), ""));
    return intent;
}

bool isOfCalendar(const RequestReading& reading)
{
    const auto cues = {AgendaCues::calendar, AgendaCues::day, AgendaCues::event, AgendaCues::occasion,
        AgendaCues::schedule, AgendaCues::busy, AgendaCues::own};
    return std::ranges::any_of(cues, [&](const Cue& cue) { return reading.has(cue); });
}

/// The event that is to be changed. "My next yoga" is one of its times; all of a day's are no series.
AgendaIntent changed(Kind kind, const SeriesWords& words, const RequestReading& reading, const RuleSurroundings& around)
{
    AgendaIntent intent = target(kind, words, around);
    if (intent.scope == Wish::Scope::open && (reading.has(AgendaCues::next) || reading.has(AgendaCues::once)))
        intent.scope = Wish::Scope::one;
    else if (intent.scope == Wish::Scope::open && reading.has(CommonCues::all))
        intent.scope = Wish::Scope::all;
    return intent;
}

/// "I can't do lunch on friday": where it goes instead has to be asked for.
std::optional<AgendaIntent> unsuited(const RequestReading& reading, const RuleSurroundings& around)
{
    const auto time = TimeWords::atEnd(reading.content, around);
    AgendaIntent intent = target(Kind::move, {.rest = time ? time->rest : reading.content}, around);
    const bool hasTime = time || intent.days != SpokenDays::ahead(around);
    return !intent.title.empty() && (hasTime || reading.has(AgendaCues::occasion)) ? std::optional(intent)
                                                                                   : std::nullopt;
}

} // namespace

AgendaIntent AgendaIntent::ofNew(EventWords event)
{
    return {.kind = Kind::add,
        .minutes = event.minutes,
        .title = std::move(event.title),
        .start = event.start,
        .end = event.end,
        .repeat = std::move(event.repeat),
        .ruleEnd = std::move(event.ruleEnd),
        .isRepeatUnknown = event.isRepeatUnknown,
        .isWholeDay = event.isWholeDay,
        .isToRepeat = event.isToRepeat,
        .isTimeUnclear = event.isTimeUnclear,
        .isPartOfDay = event.isPartOfDay,
        .contraryDays = std::move(event.contraryDays),
        .clock = event.clock};
}

std::optional<AgendaIntent> AgendaIntent::listing(const RequestReading& reading, const RuleSurroundings& around)
{
    std::string others;
    auto days = SpokenDays::find(reading.content, around, others);
    if (!RequestText::isIdle(others)) {
        days = SpokenDays::findMoment(reading.content, around, others);
        if (!days || !RequestText::isIdle(others))
            return std::nullopt;
    }
    // "What do you know about me?"
    static const Pattern talk("\\b(?:you|know|say|said)\\b", Pattern::caseless);
    const bool isOfTalk = talk.find(others) || reading.has(CommonCues::topic) || reading.has(CommonCues::tell);
    if (!days && isOfTalk && !isOfCalendar(reading))
        return std::nullopt;
    if (!days)
        days = SpokenDays::read("today", around);
    return AgendaIntent{.kind = Kind::list, .days = std::move(days)};
}

std::optional<AgendaIntent> AgendaIntent::following(const RequestReading& reading, const RuleSurroundings& around)
{
    std::string others;
    const auto days = SpokenDays::find(reading.content, around, others);
    AgendaIntent intent{.kind = Kind::next, .days = days.value_or(SpokenDays::ahead(around))};
    intent.isFurther = reading.has(AgendaCues::further);
    if (RequestText::isIdle(others))
        return intent;
    // "When is lunch with Ana?"
    if (!reading.has(CommonCues::when) && !reading.has(AgendaCues::next))
        return std::nullopt;
    intent.title = target(Kind::next, {.rest = others}, around).title;
    return intent;
}

/// A part of a day that is free counts when most of it is.
std::optional<AgendaIntent> AgendaIntent::findingTime(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern part("^(?:whole |entire |full )?(morning|afternoon|evening|day)s?\\b", Pattern::caseless);
    constexpr int mostOfAPart = 3 * usualMinutes;
    constexpr int mostOfADay = 8 * usualMinutes;
    AgendaIntent intent{.kind = Kind::findTime, .minutes = usualMinutes};
    std::string words = reading.content;
    const auto wholePart = part.find(words);
    if (wholePart)
        words = trimmed(words.substr(wholePart->range.end));
    const bool isDay = wholePart && wholePart->texts[0] == "day";
    if (wholePart) {
        intent.minutes = isDay ? mostOfADay : mostOfAPart;
    } else if (const auto length = SpokenLength::read(words)) {
        intent.minutes = length->minutes;
        words = length->rest;
    }
    std::string others;
    auto days = SpokenDays::find(words, around, others);
    if (wholePart && days && !isDay && days->from == days->to)
        days = SpokenDays::read(days->words + " " + wholePart->texts[0], around).value_or(*days);
    static const Pattern purpose("\\b(?:for|to|see|meet|visit|go|do) \\S.*$", Pattern::caseless);
    const auto isAll = [](const std::string& rest) { return RequestText::isIdle(purpose.replaceAll(rest, "")); };
    std::string beside;
    auto moment = SpokenDays::findMoment(words, around, beside); // "Am I free tomorrow at 4?"
    if (moment && (isAll(others) || isAll(beside))) {
        moment->to = moment->from.adding(intent.minutes);
        days = std::move(moment);
        others = isAll(others) ? others : beside;
    }
    // "When could I see Ben for an hour?"
    const bool hasPurpose = reading.has(CommonCues::when) && SpokenLength::read(reading.content);
    if (!hasPurpose && !isAll(others))
        return std::nullopt;
    intent.days = days;
    return intent;
}

std::optional<AgendaIntent> AgendaIntent::adding(const RequestReading& reading, const RuleSurroundings& around)
{
    AgendaIntent intent = ofNew(EventWords::read(reading.content, around));
    // "The party is on saturday at 8" only tells of it.
    static const Pattern told(
        "\\b(?:is|will be|starts|takes place) (?:on|at|this|next|today|tomorrow|tonight|from)\\b", Pattern::caseless);
    const bool isTold =
        told.find(reading.content) && !reading.has(CommonCues::enter) && !reading.has(AgendaCues::schedule);
    intent.isUnasked = (reading.has(AgendaCues::own) || isTold) && !reading.has(AgendaCues::calendar);
    // "No lunch on friday", "cancel my 1 o'clock": whatever it is, it is nothing new.
    static const Pattern ended(
        "\\b(?:no|not|cancel\\w*|delete|remove|kill|drop|skip|move|reschedule)\\b|\\bwant\\b.*\\bfree\\b",
        Pattern::caseless);
    static const Pattern takenOff(
        "(?<!\\bday)(?<!\\btime)(?<!\\bweek)(?<!\\bmorning)(?<!\\bafternoon) off$", Pattern::caseless);
    if ((intent.isUnasked && ended.find(intent.title)) || takenOff.find(intent.title))
        return std::nullopt;
    const bool isSaid = reading.has(AgendaCues::calendar) || reading.has(AgendaCues::event);
    const bool isLikely =
        reading.has(AgendaCues::occasion) || reading.has(AgendaCues::schedule) || reading.has(CommonCues::enter);
    if (intent.isUnasked && (!around.offers("add_event") || !intent.hasTime() || intent.title.empty()))
        return std::nullopt;
    if (isSaid || intent.isUnasked || (isLikely && intent.hasTime())
        || (reading.has(AgendaCues::occasion) && intent.start))
        return intent;
    return std::nullopt;
}

std::optional<AgendaIntent> AgendaIntent::moving(const RequestReading& reading, const RuleSurroundings& around)
{
    if (reading.has(AgendaCues::unable))
        return unsuited(reading, around);
    if (reading.has(CommonCues::enter) && !reading.has(CommonCues::move)) // "Add work monday to friday"
        return std::nullopt;
    // A day alone keeps the hour anyway.
    static const Pattern sameHour("[,;]?\\s*\\b(?:at |and |but )?(?:the )?same(?: (?:time|hour))?$", Pattern::caseless);
    SeriesWords words = SeriesWords::read(sameHour.replaceAll(reading.content, ""));
    const auto found = TimeWords::atEnd(words.rest, around);
    if (!found) {
        const bool isEvent =
            reading.has(AgendaCues::occasion) || reading.has(AgendaCues::calendar) || reading.has(AgendaCues::event);
        return isEvent ? std::optional(changed(Kind::move, words, reading, around)) : std::nullopt;
    }
    words.rest = found->rest;
    AgendaIntent intent = changed(Kind::move, words, reading, around);
    constexpr int minutesOfDay = 24 * 60;
    const auto length = SpokenLength::read(found->time);
    const auto days = TimeWords::daysIn(found->time);
    const int minutes = days ? *days * minutesOfDay : length && length->rest.empty() ? length->minutes : 0;
    intent.minutes = reading.has(AgendaCues::earlier) ? -minutes : minutes;
    intent.when = minutes > 0 ? std::string() : found->time;
    return intent;
}

std::optional<AgendaIntent> AgendaIntent::cancelling(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern other("^(?:everything|all|my|the)$", Pattern::caseless);
    AgendaIntent intent = changed(Kind::cancel, SeriesWords::read(reading.content), reading, around);
    if (other.find(intent.title)
        || (intent.title.empty() && !reading.has(CommonCues::pronoun) && !reading.has(AgendaCues::event)))
        return std::nullopt;
    return intent;
}

std::optional<AgendaIntent> AgendaIntent::asking(const RequestReading& reading, const RuleSurroundings& around)
{
    static const Pattern otherList("\\blists?\\b", Pattern::caseless);
    static const Pattern year("\\b(?:19|20)\\d{2}\\b");
    const std::string& content = reading.content;
    std::string beside; // "Do I have anything at 3?"
    const bool isOpen = reading.has(CommonCues::any) || reading.has(CommonCues::have);
    auto minute = isOpen ? SpokenDays::findMoment(content, around, beside) : std::optional<SpokenDays>();
    if (minute && RequestText::isIdle(beside))
        return AgendaIntent{.kind = Kind::list, .days = std::move(minute)};
    const bool isOther =
        reading.has(CommonCues::foreign) || (otherList.find(content) && !reading.has(AgendaCues::event));
    if (!isOfCalendar(reading) || (isOther && !reading.has(AgendaCues::calendar)))
        return std::nullopt;
    const auto moment = SpokenMoment::read(content, around);
    const bool namesDay = moment && moment->namesDay;
    std::string others;
    auto days = SpokenDays::find(content, around, others);
    if (namesDay && !moment->date.allDay)
        days = SpokenDays::findMoment(content, around, others);
    else if (namesDay && (!days || year.find(content)))
        days = SpokenDays{moment->date.wholeDay(), moment->date.wholeDay(), SpokenWhen::date(moment->date.wholeDay())};
    if (days)
        return AgendaIntent{.kind = Kind::list, .days = std::move(days)};
    if (!reading.has(AgendaCues::occasion) && !reading.has(AgendaCues::event) && !reading.has(AgendaCues::calendar))
        return std::nullopt;
    AgendaIntent intent = target(Kind::next, {.rest = SpokenMoment::wordsBeside(content, around)}, around);
    if (!reading.has(AgendaCues::occasion))
        intent = {.kind = Kind::list, .days = SpokenDays::ahead(around)};
    return intent;
}

} // namespace quorvell
