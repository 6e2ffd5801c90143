// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmResults.h"

#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmItem.h"
#include "Understanding/skills/alarms/AlarmQuestions.h"
#include "Understanding/skills/alarms/AlarmReply.h"
#include "Understanding/skills/alarms/AlarmsMeant.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/skills/reminders/ReminderReply.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Purpose = AlarmTalk::Purpose;

void noteFound(const std::vector<AlarmItem>& items, RequestMemory& memory)
{
    memory.found.clear();
    for (const AlarmItem& item : items)
        if (memory.found.size() < RequestMemory::mostTold)
            memory.found.push_back(item.thing);
}

void noteTalk(const ToolResult& result, RequestMemory& memory)
{
    const AlarmItem item = AlarmItem::of(result.json());
    if (item.thing.id.empty())
        return;
    const bool isOver = result.status() == ToolStatus::done && !memberOf(result.json(), "next");
    const Json* other = memberOf(result.json(), "other");
    memory.alarms = {.id = isOver ? "" : item.thing.id,
        .title = item.thing.title,
        .isTimer = item.isTimer,
        .other = other ? ToolResults::dateIn(*other, "date") : std::nullopt};
    memory.talkOf(isOver ? std::string_view() : AlarmCalls::skill);
}

/// Which of these the call is made for again.
RuleStep askWhich(
    const std::vector<AlarmItem>& items, std::string question, const ToolRequest& call, RequestMemory memory)
{
    noteFound(items, memory);
    return RuleStep::asking({.kind = &AlarmQuestions::whichOne,
                                .question = std::move(question),
                                .tool = call.name,
                                .arguments = call.arguments},
        std::move(memory));
}

RuleStep askToCancelThese(const std::vector<AlarmItem>& items, RequestMemory memory, const RuleSurroundings& around)
{
    std::vector<std::string> ids;
    for (const AlarmItem& item : items)
        ids.push_back(item.thing.id);
    const bool areTimers = std::ranges::all_of(items, &AlarmItem::isTimer);
    const std::string noun = areTimers ? "timer" : "alarm";
    const std::string which = items.size() == 1 ? "this " + noun
        : items.size() == 2                     ? "both " + noun + "s"
                                                : "all " + std::to_string(items.size()) + " " + noun + "s";
    const auto call = AlarmCalls{around}.cancelThese(ids);
    const auto* request = std::get_if<ToolRequest>(&call);
    if (!request)
        return {call, std::move(memory)};
    noteFound(items, memory);
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = "Should I cancel " + which + ": " + AlarmReply::joined(items, around) + "?",
                                .tool = request->name,
                                .arguments = request->arguments},
        std::move(memory));
}

/// One is meant, but the words do not say which.
RuleStep whichOne(
    const AlarmTalk& wish, const std::vector<AlarmItem>& items, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    const auto call =
        wish.purpose == Purpose::move ? calls.moveThis("", wish.when) : calls.cancel(AlarmCalls::kindOf(wish.isTimer));
    const auto* request = std::get_if<ToolRequest>(&call);
    if (!request)
        return {call, std::move(memory)};
    return askWhich(
        items, "Which one do you mean: " + AlarmReply::joined(items, around) + "?", *request, std::move(memory));
}

RuleStep changeFound(const AlarmTalk& wish, const AlarmItem& item, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    if (wish.purpose != Purpose::move)
        return {calls.cancelThis(item.thing.id, item.isTimer), std::move(memory)};
    if (item.isTimer) {
        const auto length = TimerLength::read(wish.when);
        return length ? RuleStep{calls.startAgain(item.thing.id, length->length), std::move(memory)}
                      : ToolResults::say("Say how long " + item.named(around) + " should run.", std::move(memory));
    }
    if (!wish.when.empty())
        return {calls.moveThis(item.thing.id, wish.when), std::move(memory)};
    const Json waiting{{"kind", "alarm"}, {"id", item.thing.id}};
    return RuleStep::asking({.kind = &AlarmQuestions::newTime,
                                .question = "To what time should I move " + item.named(around) + "?",
                                .tool = AlarmCalls::tool,
                                .arguments = dumpJson(waiting)},
        std::move(memory));
}

RuleStep takeList(const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmTalk wish = std::exchange(memory.alarms, {});
    memory.wish = {};
    const auto items = AlarmItem::listed(result.json());
    const AlarmsMeant meant = AlarmsMeant::among(items, wish.which, around);
    const std::string told = AlarmReply::list(items, meant, wish.which, wish.isTimer, around);
    memory.talkOf(AlarmCalls::skill);
    noteFound(meant.items.empty() ? items : meant.items, memory);
    const bool isChange = wish.purpose != Purpose::tell && wish.purpose != Purpose::tellLeft;
    if (!isChange || items.empty())
        return ToolResults::say(
            wish.purpose == Purpose::tellLeft && meant.items.empty() ? AlarmReply::left(items, around) : told,
            std::move(memory));
    if (meant.items.empty()) // Nothing fits: what there is is told, and nothing changed.
        return meant.isUnderstood || items.size() == 1
            ? ToolResults::say(told + " I have changed nothing.", std::move(memory))
            : whichOne(wish, items, std::move(memory), around);
    if (wish.purpose == Purpose::cancelAll)
        return askToCancelThese(meant.items, std::move(memory), around);
    if (meant.items.size() > 1)
        return whichOne(wish, meant.items, std::move(memory), around);
    return changeFound(wish, meant.items.front(), std::move(memory), around);
}

/// Nothing is done yet: the user is asked.
RuleStep askBack(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string title = result.string("task").value_or("");
    const std::string name = title == "Alarm" ? "" : title;
    if (result.status() == ToolStatus::whichTime) {
        auto choices = ReminderReply::choices(result.json());
        std::string question = ReminderQuestions::wordedChoices(choices);
        return RuleStep::asking({.kind = &AlarmQuestions::whichTime,
                                    .question = std::move(question),
                                    .task = name,
                                    .repeat = result.string("repeat").value_or(""),
                                    .choices = std::move(choices)},
            std::move(memory));
    }
    std::string question = AlarmReply::asked(result, around);
    if (result.status() == ToolStatus::whichReminder)
        return askWhich(AlarmItem::listed(result.json()), std::move(question), call, std::move(memory));
    const std::string id = result.string("id").value_or("");
    if (result.status() == ToolStatus::whichOccurrences) {
        const Json waiting{{"kind", "alarm"}, {"cancel", true}, {"id", id}};
        return RuleStep::asking({.kind = &AlarmQuestions::occurrences,
                                    .question = std::move(question),
                                    .tool = call.name,
                                    .arguments = dumpJson(waiting)},
            std::move(memory));
    }
    if (!id.empty()) {
        const Json waiting{{"kind", "alarm"}, {"id", id}};
        return RuleStep::asking({.kind = &AlarmQuestions::newTime,
                                    .question = std::move(question),
                                    .tool = call.name,
                                    .arguments = dumpJson(waiting)},
            std::move(memory));
    }
    return RuleStep::asking({.kind = &AlarmQuestions::when,
                                .question = std::move(question),
                                .task = name,
                                .settled = ReminderReply::settled(result.json())},
        std::move(memory));
}

} // namespace

RuleStep AlarmResults::take(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    if (auto failure = ToolResults::failure(result)) {
        memory.alarms = {};
        memory.wish = {};
        return ToolResults::say(*std::move(failure), std::move(memory));
    }
    if (auto asked = ToolResults::confirming(call, result, "Should I really do that?", memory))
        return *std::move(asked);
    if (result.status() == ToolStatus::reminders)
        return takeList(result, std::move(memory), around);
    if (asksBack(result.status()))
        return askBack(call, result, std::move(memory), around);
    const std::string reply = result.status() == ToolStatus::done ? AlarmReply::ended(call, result, around)
                                                                  : AlarmReply::changed(call, result, around);
    noteTalk(result, memory);
    return ToolResults::say(reply, std::move(memory));
}

} // namespace quorvell
