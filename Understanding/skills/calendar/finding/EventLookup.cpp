// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/EventLookup.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaChange.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/acting/AgendaTopic.h"
#include "Understanding/skills/calendar/finding/EventAnchor.h"
#include "Understanding/skills/calendar/finding/EventClashes.h"
#include "Understanding/skills/calendar/finding/EventElsewhere.h"
#include "Understanding/skills/calendar/finding/EventLookupReply.h"
#include "Understanding/skills/calendar/finding/EventPick.h"
#include "Understanding/skills/calendar/finding/EventRange.h"
#include "Understanding/skills/calendar/finding/FoundEvent.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventDeed.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

using Aim = EventSearch::Aim;
using Step = std::optional<RuleStep>;

constexpr std::size_t mostAtOnce = 50; ///< So many events one call deletes.

bool changes(Aim aim)
{
    return aim == Aim::cancel || aim == Aim::rename || aim == Aim::place || aim == Aim::length || aim == Aim::copy;
}

RuleStep askDays(const EventSearch& search, RequestMemory memory)
{
    memory.events = search;
    const bool isCancel = search.aim == Aim::cancel && search.isAll;
    const std::string what = search.except.empty() ? "that" : "everything but " + search.except;
    return RuleStep::asking(
        {.kind = &EventLookup::whichDays,
            .question = isCancel ? "For which days should I delete " + what + ": today, this week, or this month?"
                                 : "Which day do you mean?"},
        std::move(memory));
}

RuleStep lookFor(const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    memory.events = search;
    const SpokenDays span = EventRange::of(search, around);
    memory.days = search.name.empty() || search.days ? std::optional(span) : std::nullopt;
    return {AgendaCalls{around}.whatsOn(span, EventRange::isByWords(search) ? EventName::words(search.name) : ""),
        std::move(memory)};
}

/// "It" is the event that was talked about last.
EventSearch ofIt(EventSearch search, const FoundThing& event)
{
    search.name = event.title;
    search.days = SpokenDays{event.start->wholeDay(), event.start->wholeDay(), ""};
    return search;
}

RuleStep cancelAll(
    std::vector<FoundThing> found, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    // Without days a series goes as one, or the next time of what was named beside others.
    memory.wish = {
        .kind = Wish::Kind::cancel, .scope = search.days || !search.isAll ? Wish::Scope::one : Wish::Scope::all};
    if (memory.wish.scope == Wish::Scope::all)
        EventPick::keepOneOfSeries(found);
    found.resize(std::min(found.size(), mostAtOnce));
    memory.found = found;
    return {AgendaCalls{around}.cancelAll(found, memory.wish.scope), std::move(memory)};
}

/// Times of one series stand for the next of it.
bool areOneSeries(const std::vector<FoundThing>& found)
{
    const auto series = [](const FoundThing& event) { return event.id.substr(0, event.id.find('#')); };
    return std::ranges::all_of(
        found, [&](const FoundThing& event) { return event.repeats && series(event) == series(found.front()); });
}

RuleStep askValue(const FoundThing& event, const EventSearch& search, RequestMemory memory)
{
    memory.events = search;
    memory.found = {event};
    const std::string question = search.aim == Aim::rename ? "What should " + event.title + " be called?"
                                                           : "Where is " + event.title + " instead?";
    return RuleStep::asking(
        {.kind = &EventLookup::value, .question = question, .task = event.title}, std::move(memory));
}

/// With the one event that is meant.
RuleStep carryOut(
    const FoundThing& event, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    if (search.aim == Aim::remind)
        return FoundEvent::remind(event, search, std::move(memory), around);
    if (search.aim == Aim::length)
        return FoundEvent::setLength(event, search, std::move(memory), around);
    if (search.aim == Aim::copy)
        return FoundEvent::copy(event, search, std::move(memory), around);
    if (search.aim != Aim::cancel && search.value.empty())
        return askValue(event, search, std::move(memory));
    if (search.aim != Aim::cancel)
        return {AgendaCalls{around}.describe(
                    event.id, search.aim == Aim::rename ? "title" : "place", search.value, Wish::Scope::one),
            std::move(memory)};
    const bool isThisTime = search.isNext || search.days;
    memory.wish = {.kind = Wish::Kind::cancel,
        .title = event.title,
        .scope = isThisTime ? Wish::Scope::one
            : search.isAll  ? Wish::Scope::all
                            : Wish::Scope::open};
    return AgendaChange::carryOut(event, std::move(memory), around);
}

RuleStep askWhich(std::vector<FoundThing> found, const EventSearch& search, RequestMemory memory)
{
    memory.events = search;
    if (!search.days)
        EventPick::keepOneOfSeries(found);
    const std::string question = EventLookupReply::several(found);
    memory.found = std::move(found);
    return RuleStep::asking(
        {.kind = &EventLookup::whichEvent, .question = question, .task = search.name}, std::move(memory));
}

/// What changes, or reminds of, one event.
RuleStep actOn(
    std::vector<FoundThing> found, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    const bool isSpokenOf = !memory.event.id.empty()
        && std::ranges::any_of(found, [&](const FoundThing& event) { return event.id == memory.event.id; });
    const bool isEach = search.name.find(" and ") != std::string::npos && EventName::fitting(found, search.name).empty()
        && EventPick::eachOf(found, search.name).size() == found.size();
    if (found.size() > 1 && (search.isAll || isEach) && search.aim == Aim::cancel)
        return cancelAll(std::move(found), search, std::move(memory), around);
    if (found.size() > 1 && isSpokenOf && !search.name.empty())
        found = {memory.event};
    if (found.size() > 1 && areOneSeries(found))
        found.resize(1);
    if (found.size() > 1)
        return askWhich(std::move(found), search, std::move(memory));
    return carryOut(found.front(), search, std::move(memory), around);
}

Step takeDays(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern everything(
        "^(?:(?:for |please |just )*(?:all|everything|every(?: single)? (?:day|one)|any|all (?:days|"
        "of (?:it|them)|events|time)|forever|always|the (?:whole|entire) (?:year|calendar))"
        "(?: of them| please)?)$");
    std::string others;
    EventSearch search = memory.events;
    search.days = SpokenDays::find(core, around, others);
    search.isUnclear = false;
    if (!search.days && everything.find(CalendarWords::of(core).plain) && search.aim == Aim::cancel) {
        memory.wish = {.kind = Wish::Kind::cancel};
        memory.talkOf(AgendaCalls::skill);
        search.isAll = true;
        search.isWide = true;
        return lookFor(search, std::move(memory), around);
    }
    if (!search.days)
        return std::nullopt;
    return EventLookup::begin(std::move(search), std::move(memory), around);
}

Step takeEvent(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    const auto named = EventName::fitting(memory.found, core);
    const auto event = named.size() == 1 ? std::optional(named.front()) : Pointing::at(memory.found, core, around);
    const EventSearch search = memory.events;
    if (!event)
        return std::nullopt;
    memory.events = {};
    return carryOut(*event, search, std::move(memory), around);
}

Step takeValue(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    EventSearch search = std::exchange(memory.events, {});
    if (memory.found.empty() || core.empty())
        return std::nullopt;
    search.value = core;
    const FoundThing event = memory.found.front();
    return carryOut(event, search, std::move(memory), around);
}

} // namespace

const QuestionKind EventLookup::whichDays{takeDays};
const QuestionKind EventLookup::whichEvent{takeEvent};
const QuestionKind EventLookup::value{takeValue};

Request EventLookup::request(EventSearch search, const std::string& core)
{
    search.name = CalendarWords::asSaid(search.name, core);
    if (search.aim == Aim::remind)
        search.value = CalendarWords::asSaid(search.value, core);
    Request request{.answer = [search](RequestMemory memory, const RuleSurroundings& around) {
        return begin(search, std::move(memory), around);
    }};
    if (changes(search.aim) || search.aim == Aim::remind)
        request.wish = Wish{.kind = Wish::Kind::cancel, .title = search.name};
    return request;
}

RuleStep EventLookup::begin(EventSearch search, RequestMemory memory, const RuleSurroundings& around)
{
    memory.wish = {};
    memory.events = {};
    if (search.days)
        search.days = CalendarWords::asMeant(*search.days, around);
    const AgendaCalls calls{around};
    if (changes(search.aim))
        if (auto refusal = calls.refusal())
            return {*std::move(refusal), std::move(memory)};
    if (changes(search.aim) || search.aim == Aim::remind) // What follows from looking it up is no mere looking up.
        memory.wish = {.kind = Wish::Kind::cancel, .title = search.name};
    memory.talkOf(AgendaCalls::skill);
    // "What is on my calendar" is about today, "my events" are what is to come.
    const bool isOfToday = search.aim == Aim::tell && search.noun.empty() && search.name.empty() && !search.isNext
        && search.anchor.empty();
    if (isOfToday && !search.days && !search.isUnclear)
        search.days = EventRange::today(around);
    const bool isOfMany = search.isNext || search.isAll || search.isBack || search.aim == Aim::clashes;
    const bool isUnnamed = search.name.empty() && !search.days && !isOfMany && search.anchor.empty();
    if (search.aim == Aim::tell) {
        memory.asked = RequestMemory::CalendarQuestion::events;
    } else if (isUnnamed && search.aim != Aim::confirm && memory.event.start) {
        if (search.aim == Aim::remind || search.aim == Aim::cancel) {
            const FoundThing event = memory.event;
            return carryOut(event, search, std::move(memory), around);
        }
        const EventSearch ofEvent = ofIt(std::move(search), memory.event);
        return lookFor(ofEvent, std::move(memory), around);
    }
    const bool isAnything = search.isAll && search.name.empty() && !search.days && search.anchor.empty()
        && !search.isWide && !search.isOfSeries;
    const bool isDoubtful = search.isUnclear && (search.aim == Aim::cancel || !search.days);
    if (isDoubtful || (search.aim == Aim::cancel && isAnything))
        return askDays(search, std::move(memory));
    return lookFor(search, std::move(memory), around);
}

RuleStep EventLookup::offerReminder(std::string said, int minutes, RequestMemory memory, const RuleSurroundings& around)
{
    const FoundThing event = memory.event;
    RuleStep step = FoundEvent::remind(event, {.minutes = minutes}, std::move(memory), around);
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    if (!call)
        return {said + " " + std::get<std::string>(step.answer), std::move(step.memory)};
    const DateParts when = event.start->allDay ? *event.start : event.start->adding(-minutes);
    const std::string question = said + " Should I remind you " + SpokenWhen::on(SpokenWhen::date(when)) + "?";
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = question,
                                .task = event.title,
                                .tool = call->name,
                                .arguments = call->arguments},
        std::move(step.memory));
}

namespace {

/// Nothing of that name among the events: it may be a reminder that they call so.
Step reminderInstead(
    std::vector<FoundThing> listed, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around)
{
    std::vector<FoundThing> others = listed;
    std::erase_if(others, [](const FoundThing& thing) { return thing.skill == AgendaCalls::skill; });
    const auto named = search.name.empty() ? std::vector<FoundThing>() : EventName::fitting(others, search.name);
    const bool isAtHour = search.isLoose && search.name.empty() && others.size() == 1;
    // Of another day it may be an event all the same.
    const bool isAnywhere = search.isLoose && !search.name.empty() && !search.days;
    if (!isAtHour && named.size() != 1 && !isAnywhere)
        return std::nullopt;
    memory.wish = {.kind = Wish::Kind::cancel,
        .title = isAtHour       ? others.front().title
            : named.size() == 1 ? named.front().title
                                : search.name};
    memory.events = {.isWide = true};
    return AgendaChange::afterList(std::move(listed), std::move(memory), around);
}

RuleStep nothingFound(const std::vector<FoundThing>& listed, const EventLookupReply& reply, RequestMemory memory,
    const RuleSurroundings& around)
{
    const EventSearch& search = reply.search;
    if (search.rings) { // Then it may be an alarm, or a reminder.
        memory.alarms = {.purpose = AlarmTalk::Purpose::before,
            .which = search.name,
            .length = std::chrono::minutes(search.minutes),
            .otherwise = "I find no \"" + search.name + "\" in your calendar or among your alarms."};
        return {AlarmCalls{around}.list("all"), std::move(memory)};
    }
    if (search.aim == Aim::remind)
        if (auto step = FoundEvent::remindAnyway(search, memory, around))
            return *std::move(step);
    if (search.aim == Aim::remind && !search.value.empty())
        return EventDeed::askTime(search, reply.nothing(listed), std::move(memory));
    if (auto step = search.aim == Aim::cancel ? reminderInstead(listed, search, memory, around) : std::nullopt)
        return *std::move(step);
    if (const auto wider = EventElsewhere::next(search, reply.nothing(listed), reply.none()))
        return lookFor(*wider, std::move(memory), around);
    if (!search.name.empty())
        memory.event = {}; // "It" would be something else than what was asked for.
    return {.answer = search.otherwise.empty() ? reply.nothing(listed) : search.otherwise,
        .memory = std::move(memory),
        .isNotUnderstood = search.isForModel,
        .isNotFound = search.aim == Aim::cancel};
}

/// Of clashes and of what comes back everything is told at once.
Step toldOfAll(const std::vector<FoundThing>& listed, const std::vector<FoundThing>& found, const EventSearch& search,
    const RequestMemory& memory)
{
    std::vector<FoundThing> events = listed;
    std::erase_if(events, [](const FoundThing& thing) { return thing.skill != AgendaCalls::skill; });
    std::string told = search.aim == Aim::clashes ? EventClashes::told(events, search) : "";
    if (search.aim == Aim::repeats && (search.name.empty() || !found.empty()))
        told = EventClashes::repeating(found, search);
    return told.empty() ? std::nullopt : Step(RuleStep{std::move(told), memory});
}

} // namespace

RuleStep EventLookup::take(
    std::vector<FoundThing> listed, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    EventSearch search = std::exchange(memory.events, {});
    memory.wish = {};
    const bool isMissing =
        !search.anchor.empty() && EventAnchor::bound(listed, search, around) == EventAnchor::Verdict::isMissing;
    if (isMissing)
        return {"I found no " + search.anchor + AgendaReply::daysBehind(search.days ? search.days->words : "")
                + " in your calendar.",
            std::move(memory)};
    auto found = EventPick::fitting(listed, search, result, around);
    if (found.empty() && search.isBack && !search.isWide && !search.days) {
        search.isWide = true;
        return lookFor(search, std::move(memory), around);
    }
    if (const auto parted = found.empty() ? EventDeed::apart(search) : std::nullopt)
        return lookFor(*parted, std::move(memory), around);
    if (auto step = toldOfAll(listed, found, search, memory))
        return *std::move(step);
    const EventLookupReply reply{search, result, around};
    if (found.empty())
        return nothingFound(listed, reply, std::move(memory), around);
    const bool isOnlyTold =
        search.isElsewhere && !(search.aim == Aim::cancel && EventElsewhere::isMeant(found, search));
    if (!isOnlyTold && (changes(search.aim) || search.aim == Aim::remind))
        return actOn(std::move(found), search, std::move(memory), around);
    std::string told = isOnlyTold ? EventElsewhere::told(found, search) : reply.found(found);
    if (found.size() == 1 && found.front().skill == AgendaCalls::skill)
        AgendaTopic::talkAbout(found.front(), memory);
    if (search.aim == Aim::tell)
        memory.asked = RequestMemory::CalendarQuestion::events;
    AgendaTopic::keepTold(std::move(found), memory);
    return {std::move(told), std::move(memory)};
}

} // namespace quorvell
