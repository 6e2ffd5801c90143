// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmResults.h"

#include "QuorvellCore/text/Characters.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmItem.h"
#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmQuestions.h"
#include "Understanding/skills/alarms/AlarmReply.h"
#include "Understanding/skills/alarms/AlarmRest.h"
#include "Understanding/skills/alarms/AlarmSeriesSteps.h"
#include "Understanding/skills/alarms/AlarmsMeant.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/skills/reminders/ReminderReply.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenRepeat.h"

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
    const auto otherBefore = memory.alarms.id.empty() ? memory.alarms.other : std::nullopt;
    memory.alarms = {.id = isOver ? "" : item.thing.id,
        .title = item.thing.title,
        .start = item.thing.start,
        .isTimer = item.isTimer,
        .isWaking = memory.alarms.isWaking,
        .other = other ? ToolResults::dateIn(*other, "date") : otherBefore};
    memory.talkOf(AlarmCalls::skill);
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

/// They are told, and can be set again by "undo that". Of more than can be told, it is asked.
RuleStep cancelThese(const AlarmsMeant& meant, RequestMemory memory, const RuleSurroundings& around)
{
    const std::vector<AlarmItem>& items = meant.items;
    noteFound(items, memory);
    if (meant.days && std::ranges::any_of(items, [](const AlarmItem& item) { return item.rule.has_value(); }))
        return AlarmRest::forDays(items, *meant.days, std::move(memory), around);
    const auto call = AlarmCalls{around}.cancelThese(AlarmRest::idsOf(items));
    if (items.size() > RequestMemory::mostTold)
        return AlarmRest::askFirst(call,
            "Should I cancel all " + std::to_string(items.size()) + ": " + AlarmReply::joined(items, around) + "?",
            std::move(memory));
    memory.alarms.severalEnded = AlarmReply::cancelled(items, around);
    return {call, std::move(memory)};
}

/// What is wished for, done to one; the text of what cannot be done.
ToolCalls::Answer changeOf(const AlarmTalk& wish, const std::string& id, bool isTimer, const RuleSurroundings& around)
{
    const AlarmCalls calls{around};
    switch (wish.purpose) {
    case Purpose::move:
        return calls.moveThis(id, wish.when);
    case Purpose::runAnew:
        return calls.startAgain(id, wish.length);
    case Purpose::rename:
        return calls.rename(id, isTimer, wish.when);
    case Purpose::repeat: {
        const auto phrase = SpokenPhrase::read(wish.when, around);
        const auto rule = SpokenRepeat::read(wish.when);
        if (phrase && phrase->repeatRule)
            return calls.repeatThis(id, phrase->repeatRule->stored());
        if (rule && !rule->stored.empty())
            return calls.repeatThis(id, rule->stored);
        return "I did not understand how often it should ring. Nothing is changed.";
    }
    default:
        return calls.cancelThis(id, isTimer);
    }
}

/// One is meant, but the words do not say which.
RuleStep whichOne(
    const AlarmTalk& wish, const std::vector<AlarmItem>& items, RequestMemory memory, const RuleSurroundings& around)
{
    const auto call = changeOf(wish, "", wish.isTimer, around);
    const auto* request = std::get_if<ToolRequest>(&call);
    if (!request)
        return {call, std::move(memory)};
    return askWhich(
        items, "Which one do you mean: " + AlarmReply::joined(items, around) + "?", *request, std::move(memory));
}

RuleStep changeFound(const AlarmTalk& wish, const AlarmItem& item, RequestMemory memory, const RuleSurroundings& around)
{
    const bool isMove = wish.purpose == Purpose::move;
    if (isMove && item.isTimer) {
        const auto length = TimerLength::read(wish.when);
        const AlarmCalls calls{around};
        return length ? RuleStep{calls.startAgain(item.thing.id, length->length), std::move(memory)}
                      : ToolResults::say("Say how long " + item.named(around) + " should run.", std::move(memory));
    }
    if (wish.purpose == Purpose::rename && wish.when.empty()) {
        const Json waiting{{"kind", AlarmCalls::kindOf(item.isTimer)}, {"id", item.thing.id}};
        return RuleStep::asking({.kind = &AlarmQuestions::newName,
                                    .question = "What should " + item.named(around) + " be called?",
                                    .tool = AlarmCalls::tool,
                                    .arguments = dumpJson(waiting)},
            std::move(memory));
    }
    if (isMove && item.rule)
        if (auto step = AlarmRest::moveOnce(item, wish.when, memory, around))
            return *std::move(step);
    if (!isMove || !wish.when.empty())
        return {changeOf(wish, item.thing.id, item.isTimer, around), std::move(memory)};
    const Json waiting{{"kind", "alarm"}, {"id", item.thing.id}};
    return RuleStep::asking({.kind = &AlarmQuestions::newTime,
                                .question = "To what time should I move " + item.named(around) + "?",
                                .tool = AlarmCalls::tool,
                                .arguments = dumpJson(waiting)},
        std::move(memory));
}

/// An alarm at a time that hangs on another thing that rings. It is asked about: nobody named that hour.
RuleStep setBefore(
    const AlarmTalk& wish, const std::vector<AlarmItem>& meant, RequestMemory memory, const RuleSurroundings& around)
{
    if (meant.size() != 1 || !meant.front().thing.start)
        return RuleStep::asking(
            {.kind = &AlarmQuestions::when,
                .question = (!meant.empty()                   ? "There are several like that."
                                    : !wish.otherwise.empty() ? wish.otherwise
                                                              : "I find no alarm called \"" + wish.which + "\".")
                    + " For what time should I set the alarm?"},
            std::move(memory));
    const AlarmItem& item = meant.front();
    const auto minutes = std::chrono::floor<std::chrono::minutes>(wish.length);
    AlarmItem wanted{.thing = {.start = item.thing.start->adding(-minutes.count())}};
    return AlarmRest::askFirst(AlarmCalls{around}.setAlarmAt("", *wanted.thing.start, ""),
        withUpperCaseFirst(item.named(around)) + " is there. Should I set another one for " + wanted.when(around) + "?",
        std::move(memory));
}

/// What was told, and what of it may be ringing now.
void noteTold(const AlarmTalk& wish, const std::vector<AlarmItem>& told, RequestMemory& memory)
{
    memory.talkOf(AlarmCalls::skill);
    memory.alarms.isTimer = wish.isTimer;
    memory.alarms.rings = std::ranges::any_of(told, [](const AlarmItem& item) {
        return item.isMissed || (item.isTimer && !item.isPaused && item.left.count() == 0);
    });
    if (told.size() != 1)
        return;
    memory.alarms.id = told.front().thing.id;
    memory.alarms.title = told.front().thing.title;
}

RuleStep takeList(const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    const AlarmTalk wish = std::exchange(memory.alarms, {});
    memory.wish = {};
    const auto items = AlarmItem::listed(result.json());
    const AlarmsMeant meant = AlarmsMeant::among(items, wish.which, around);
    const std::string told = wish.purpose == Purpose::turnOn && !meant.items.empty()
        ? AlarmReply::areOn(meant.items, around)
        : AlarmReply::list(items, meant, wish.isTimer, around);
    noteTold(wish, meant.items.empty() ? items : meant.items, memory);
    noteFound(meant.items.empty() ? items : meant.items, memory);
    if (wish.purpose == Purpose::before)
        return setBefore(wish, meant.isNarrowed ? meant.items : std::vector<AlarmItem>(), std::move(memory), around);
    if (meant.items.empty() && !wish.otherwise.empty())
        return ToolResults::say(wish.otherwise, std::move(memory));
    if (wish.purpose == Purpose::tellLeft || wish.purpose == Purpose::tellEnd)
        return ToolResults::say(AlarmReply::left(items, meant, wish, around), std::move(memory));
    if (wish.purpose == Purpose::runAnew && meant.items.empty())
        return {AlarmCalls{around}.setTimer(wish.length, wish.which), std::move(memory)};
    if (wish.purpose == Purpose::turnOn && meant.items.empty())
        return {AlarmCalls{around}.setAlarm(AlarmLine::asTime(wish.which), ""), std::move(memory)};
    if (wish.purpose == Purpose::tell || wish.purpose == Purpose::turnOn || items.empty())
        return ToolResults::say(told, std::move(memory));
    if (meant.items.empty()) // Nothing fits: what there is is told, and nothing changed.
        return meant.isUnderstood || items.size() == 1
            ? ToolResults::say(told + " Nothing is changed.", std::move(memory))
            : whichOne(wish, items, std::move(memory), around);
    const bool isOfDays =
        wish.purpose == Purpose::cancel && meant.items.size() == 1 && meant.days && meant.items.front().rule;
    if (wish.purpose == Purpose::cancelAll || isOfDays)
        return cancelThese(meant, std::move(memory), around);
    if (meant.items.size() > 1)
        return whichOne(wish, meant.items, std::move(memory), around);
    return changeFound(wish, meant.items.front(), std::move(memory), around);
}

/// Nobody is woken at 9 in the evening.
std::optional<DateParts> toWakeAt(const ToolResult& result, RequestMemory& memory)
{
    constexpr int firstHour = 6;
    constexpr int noon = 12;
    const auto choices = ReminderReply::choices(result.json());
    const auto morning = std::ranges::find_if(
        choices, [](const TimeChoice& choice) { return choice.date.hour >= firstHour && choice.date.hour < noon; });
    if (!memory.alarms.isWaking || choices.size() != 2 || morning == choices.end())
        return std::nullopt;
    memory.alarms.other = choices[morning == choices.begin() ? 1 : 0].date; // "No, evening" still means that one.
    return morning->date;
}

/// Nothing is done yet: the user is asked.
RuleStep askBack(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string title = result.string("task").value_or("");
    const std::string name = title == "Alarm" ? "" : title;
    if (const auto morning = result.status() == ToolStatus::whichTime ? toWakeAt(result, memory) : std::nullopt)
        return {AlarmCalls{around}.setAlarmAt(name, *morning, result.string("repeat").value_or("")), std::move(memory)};
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
    const AlarmTalk::Series series = memory.alarms.series;
    if (auto failure = ToolResults::failure(result)) {
        memory.alarms = {};
        memory.wish = {};
        return AlarmSeriesSteps::brokenOff(series, ToolResults::say(*std::move(failure), std::move(memory)));
    }
    if (auto asked = ToolResults::confirming(call, result, "Should I really do that?", memory))
        return *std::move(asked);
    if (result.status() == ToolStatus::reminders)
        return takeList(result, std::move(memory), around);
    if (asksBack(result.status())) {
        RuleStep step = askBack(call, result, std::move(memory), around);
        if (std::holds_alternative<ToolRequest>(step.answer))
            return step;
        step.memory.alarms.series = {};
        return AlarmSeriesSteps::brokenOff(series, std::move(step));
    }
    if (result.status() == ToolStatus::done && !series.left.empty()) {
        std::string lead = memory.alarms.severalEnded;
        return AlarmSeriesSteps::standIn(std::move(lead), std::move(memory), around);
    }
    if (result.status() == ToolStatus::set && AlarmSeriesSteps::isUnderWay(memory))
        return AlarmSeriesSteps::goOn(result, std::move(memory), around);
    const std::string reply = result.status() == ToolStatus::done
        ? AlarmReply::ended(call, result, memory.alarms, around)
        : AlarmReply::changed(call, result, memory, around);
    noteTalk(result, memory);
    return ToolResults::say(reply, std::move(memory));
}

} // namespace quorvell
