// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/AgendaSkill.h"

#include "QuorvellCore/text/Characters.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/calendar/AgendaPhrases.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/EventRemoving.h"
#include "Understanding/skills/calendar/EventSetting.h"
#include "Understanding/skills/calendar/EventTalk.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaChange.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/acting/AgendaTopic.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/finding/EventPick.h"
#include "Understanding/skills/calendar/reading/AgendaCues.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderIntent.h"
#include "Understanding/skills/reminders/ReminderRules.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/words/CommonCues.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;

constexpr CueWeights weights[] = {
    {CommonCues::definite, {{{"moveEvent", 1}, {"cancelEvent", 1}}}},
    {CommonCues::indefinite, {{{"addEvent", 1}, {"moveEvent", -1}}}},
    {CommonCues::pronoun, {{{"moveEvent", 1}}}},
    {CommonCues::make, {{{"addEvent", 2}, {"moveEvent", 2}}}},
    {CommonCues::enter, {{{"addEvent", 3}}}},
    {AgendaCues::own, {{{"addEvent", 2}}}},
    {AgendaCues::schedule, {{{"addEvent", 5}, {"remind", 1}}}},
    {CommonCues::find, {{{"findTime", 2}}}},
    {CommonCues::read, {{{"listEvents", 2}}}},
    {CommonCues::open, {{{"listEvents", 2}}}},
    {CommonCues::show, {{{"listEvents", 2}, {"findTime", 1}}}},
    {CommonCues::tell, {{{"listEvents", 1}}}},
    {CommonCues::cancel, {{{"cancelEvent", 5}, {"nextEvent", -4}}}},
    {CommonCues::move, {{{"moveEvent", 5}, {"nextEvent", -4}}}},
    {AgendaCues::earlier, {{{"moveEvent", 5}}}},
    {AgendaCues::unable, {{{"moveEvent", 5}}}},
    {CommonCues::delay, {{{"moveEvent", 4}}}},
    {CommonCues::what, {{{"listEvents", 2}, {"nextEvent", 1}, {"findTime", 1}}}},
    {CommonCues::when, {{{"findTime", 2}, {"nextEvent", 2}}}},
    {CommonCues::have, {{{"listEvents", 2}, {"findTime", 1}}}},
    {CommonCues::there, {{{"listEvents", 2}, {"findTime", 1}}}},
    {CommonCues::any, {{{"listEvents", 2}, {"findTime", 1}}}},
    {AgendaCues::calendar,
        {{{"addEvent", 3}, {"listEvents", 4}, {"moveEvent", 1}, {"cancelEvent", 1}, {"nextEvent", 1}, {"keepNote", -4},
            {"readNote", -4}, {"findNote", -4}}}},
    {AgendaCues::day, {{{"listEvents", 3}}}},
    {AgendaCues::event, {{{"addEvent", 2}, {"moveEvent", 1}, {"cancelEvent", 1}, {"listEvents", 1}}}},
    {AgendaCues::occasion,
        {{{"addEvent", 2}, {"moveEvent", 1}, {"cancelEvent", 1}, {"nextEvent", 2}, {"findNote", -1}}}},
    {AgendaCues::free, {{{"findTime", 4}, {"listEvents", -3}, {"nextEvent", -4}}}},
    {AgendaCues::time, {{{"findTime", 3}, {"listEvents", -3}}}},
    {AgendaCues::busy, {{{"listEvents", 3}}}},
    {AgendaCues::next, {{{"nextEvent", 5}}}},
    {AgendaCues::further, {{{"nextEvent", 4}}}},
    {CommonCues::instead, {{{"moveEvent", 2}}}},
    {CommonCues::foreign,
        {{{"cancelEvent", -6}, {"moveEvent", -6}, {"listEvents", -4}, {"findTime", -6}, {"addEvent", -6},
            {"remind", -2}}}},
};

Found requestFor(std::optional<AgendaIntent> intent)
{
    return intent ? Found(AgendaRules::request(*std::move(intent))) : std::nullopt;
}

Found list(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(AgendaIntent::listing(reading, around));
}

Found next(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(AgendaIntent::following(reading, around));
}

Found findTime(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(AgendaIntent::findingTime(reading, around));
}

Found add(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(AgendaIntent::adding(reading, around));
}

/// What nobody named may be a reminder as well: it is left open.
Found move(const RequestReading& reading, const RuleSurroundings& around)
{
    auto moved = AgendaIntent::moving(reading, around);
    const bool isNamed = moved && (!moved->title.empty() || reading.has(AgendaCues::earlier));
    if (!moved || isNamed)
        return requestFor(std::move(moved));
    auto change = ReminderChange::puttingOff(reading, around);
    return change ? Found(ReminderRules::request(*std::move(change))) : std::nullopt;
}

Found cancel(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(AgendaIntent::cancelling(reading, around));
}

constexpr RequestKind kinds[] = {
    {"listEvents", {.moment = -1, .day = 1}, list},
    {"nextEvent", {}, next},
    {"findTime", {.day = 1, .length = 3}, findTime},
    {"addEvent", {.moment = 2}, add},
    {"moveEvent", {.moment = 2, .length = 2, .newTime = 3}, move},
    {"cancelEvent", {}, cancel},
};

constexpr TrailingWish trailingWishes[] = {
    {"(?:put|add|enter|write|pop|stick|note|get|mark|save) (?:that|this|it) (?:down )?(?:in|into|on|onto|to)"
     "(?: (?:my|the|our))? (?:calendar|diary|agenda|schedule|planner)(?: (?:as )?(?:all|full|whole)[ -]day)?",
        "put ", " in my calendar"},
    {"(?:put|add|note|enter) (?:that|this|it) in", "put ", " in my calendar"},
};

constexpr std::string_view tools[] = {"whats_on", "find_free_time", "add_event", "change_event"};

std::string ability(const RuleSurroundings& around)
{
    return around.offers("whats_on") && around.offers("add_event") ? "keep your calendar" : "";
}

/// A bare time, as the new one of what was named.
Found readElsewhere(
    const std::string& thing, const RequestReading&, const std::string& words, const RuleSurroundings& around)
{
    const std::string when = thing.empty() ? "" : ReminderIntent::bareTime(words, around);
    if (when.empty())
        return std::nullopt;
    return AgendaRules::request(
        {.kind = AgendaIntent::Kind::move, .days = SpokenDays::ahead(around), .title = thing, .when = when});
}

Found readQuestion(const RequestReading& reading, const RuleSurroundings& around)
{
    return requestFor(AgendaIntent::asking(reading, around));
}

Found readStatement(const std::string& core, const RuleSurroundings& around)
{
    auto request = EventRemoving::readNews(core, around);
    return request ? request : EventSetting::readStatement(core, around);
}

std::string questionBefore(const ToolRequest& call)
{
    if (call.name == "change_event")
        return "Should I change that in your calendar?";
    if (call.name != "add_event")
        return "";
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    return AgendaReply::offer(arguments);
}

std::vector<FoundThing> listedIn(const Json& result)
{
    auto listed = ToolResults::things(result, "items", {.skill = AgendaCalls::skill});
    const Json* items = memberOf(result, "items");
    for (FoundThing& thing : listed) {
        const auto item = std::ranges::find_if(
            *items, [&](const Json& candidate) { return readString(candidate, "id") == thing.id; });
        if (item != items->end() && readString(*item, "kind") != "event")
            thing.skill = ReminderCalls::skill;
    }
    return listed;
}

RuleStep takeList(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    auto listed = listedIn(result.json());
    if (memory.events.aim != EventSearch::Aim::none) {
        const EventSearch search = memory.events;
        const bool isOffered = search.aim == EventSearch::Aim::when && !search.fallback.empty();
        if (isOffered && EventPick::fitting(listed, search, result, around).empty())
            return AgendaRules::offerNew(search, std::move(memory));
        RuleStep step = EventLookup::take(std::move(listed), result, std::move(memory), around);
        if (auto* said = std::get_if<std::string>(&step.answer))
            *said = AgendaReply::withUnread(std::move(*said), result.json());
        return step;
    }
    if (auto step = AgendaChange::afterList(listed, memory, around)) {
        if (auto* said = std::get_if<std::string>(&step->answer))
            *said = AgendaReply::withUnread(std::move(*said), result.json());
        return *std::move(step);
    }
    AgendaTopic::keepTold(std::move(listed), memory);
    std::string reply = AgendaReply::reply(call, result, memory, around);
    return ToolResults::say(std::move(reply), std::move(memory));
}

/// Nobody who asks what is on means the alarm that wakes them.
ToolResult withoutAlarms(const ToolResult& result)
{
    Json told = result.json();
    const Json* items = memberOf(told, "items");
    if (!items || !items->is_array())
        return result;
    Json kept = Json::array();
    std::ranges::copy_if(
        *items, std::back_inserter(kept), [](const Json& item) { return readString(item, "kind") != "alarm"; });
    told["items"] = std::move(kept);
    return ToolResult::parse(dumpJson(told)).value_or(result);
}

/// What was told of the events before this one, of several that are put in.
std::string toldBefore(const ToolRequest& call, RequestMemory& memory)
{
    const bool isOneOfSeveral = call.name == "add_event" && !memory.remark.empty();
    return isOneOfSeveral ? trimmed(std::exchange(memory.remark, {})) + " " : std::string();
}

RuleStep takeResult(
    const ToolRequest& call, const ToolResult& answer, RequestMemory memory, const RuleSurroundings& around)
{
    const ToolResult result = call.name == "whats_on" ? withoutAlarms(answer) : answer;
    if (auto failure = ToolResults::failure(result)) {
        memory.eventsToCome.clear();
        const std::string told = toldBefore(call, memory);
        return ToolResults::say(told + *failure, std::move(memory));
    }
    const std::string title = result.string("title").value_or("");
    if (auto asked = ToolResults::confirming(call, result, "Should I really delete " + title + "?", memory))
        return *std::move(asked);
    if (call.name == "whats_on")
        return takeList(call, result, std::move(memory), around);
    std::string reply = AgendaReply::reply(call, result, memory, around);
    if (call.name != "find_free_time") {
        const bool isThere = result.status() == ToolStatus::added || result.status() == ToolStatus::changed;
        memory.event = isThere ? ToolResults::thing(result.json(), {.skill = AgendaCalls::skill}) : FoundThing();
        if (!memory.event.id.empty())
            memory.talkOf(AgendaCalls::skill);
    }
    reply = toldBefore(call, memory) + reply;
    if (result.status() == ToolStatus::added && !memory.eventsToCome.empty()) {
        const ToolRequest next = memory.eventsToCome.front();
        memory.eventsToCome.erase(memory.eventsToCome.begin());
        memory.remark = reply;
        return {next, std::move(memory)};
    }
    const EventSearch wished = std::exchange(memory.events, {});
    if (result.status() == ToolStatus::added && wished.aim == EventSearch::Aim::remind)
        return EventLookup::offerReminder(std::move(reply), wished.minutes, std::move(memory), around);
    return ToolResults::say(std::move(reply), std::move(memory));
}

Skill::Step undo(RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.asked != RequestMemory::CalendarQuestion::none || memory.event.id.empty())
        return std::nullopt;
    // What was set as a series goes as one.
    if (memory.event.repeats && memory.wish.scope == Wish::Scope::open)
        memory.wish.scope = Wish::Scope::all;
    return RuleStep{AgendaCalls{around}.cancel(memory.event.id, memory.wish.scope), std::move(memory)};
}

RuleStep pointAt(const FoundThing& event, RequestMemory memory, const RuleSurroundings&)
{
    AgendaTopic::talkAbout(event, memory);
    return {AgendaReply::named(event) + ".", std::move(memory)};
}

} // namespace

constinit const Skill AgendaSkill::row{
    .name = AgendaCalls::skill,
    .tools = tools,
    .cues = AgendaCues::rows,
    .weights = weights,
    .kinds = kinds,
    .trailingWishes = trailingWishes,
    .ability = ability,
    .readPlain = AgendaPhrases::read,
    .readStatement = readStatement,
    .readElsewhere = readElsewhere,
    .readQuestion = readQuestion,
    .questionBefore = questionBefore,
    .takeResult = takeResult,
    .whatWasDone = AgendaReply::done,
    .goOn = EventTalk::goOn,
    .undo = undo,
    .retime = AgendaRules::retime,
    .changeListed = AgendaRules::changeListed,
    .pointAt = pointAt,
};

} // namespace quorvell
