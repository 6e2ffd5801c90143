// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderResults.h"

#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/skills/reminders/ReminderReply.h"
#include "Understanding/skills/reminders/ReminderRules.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr ToolResults::ThingForm form{ReminderCalls::skill, "task", "date"};

/// People tell what they have done whether a reminder asked them to or not.
std::string failureReply(const Json& arguments, const ToolResult& result)
{
    if (result.failure() != ToolFailure::noReminderWithWords)
        return ToolResults::forUser(result.wordsForModel());
    return memberOf(arguments, "done") || memberOf(arguments, "cancel") ? "All right. There was no reminder for that."
                                                                        : "I found no reminder like that.";
}

RuleStep takeFailure(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    const bool isNamed = memberOf(arguments, "id") || memberOf(arguments, "task");
    // Then the reminder that was just talked about is meant.
    if (result.failure() == ToolFailure::noReminderDue && !isNamed && !memory.reminder.id.empty()) {
        if (auto step = ReminderRules::putOffAhead(readString(arguments, "later").value_or(""), memory, around))
            return std::move(*step);
        return {ToolCalls::chosen(call.name, call.arguments, memory.reminder.id), std::move(memory)};
    }
    const bool isUnnamedTime =
        result.failure() == ToolFailure::noReminderDue && !isNamed && memberOf(arguments, "later");
    if (isUnnamedTime && !memory.request.empty()) // "Remind me tomorrow", where nothing is due: of what?
        return {ReminderCalls{around}.set(memory.request), std::move(memory)};
    return ToolResults::say(failureReply(arguments, result), std::move(memory));
}

const QuestionKind* questionIn(const ToolResult& result)
{
    if (result.status() == ToolStatus::whichTime)
        return &ReminderQuestions::whichTime;
    if (result.status() == ToolStatus::needsTime)
        return &ReminderQuestions::when;
    if (result.status() == ToolStatus::needsTask)
        return &ReminderQuestions::task;
    if (result.status() == ToolStatus::whichOccurrences)
        return &ReminderQuestions::occurrences;
    return result.status() == ToolStatus::whichReminder ? &ReminderQuestions::whichReminder : nullptr;
}

PendingQuestion pendingIn(const ToolRequest& call, const ToolResult& result, const std::string& question)
{
    const QuestionKind* kind = questionIn(result);
    if (!kind)
        return {};
    if (kind == &ReminderQuestions::occurrences)
        return {.kind = kind,
            .question = question,
            .tool = call.name,
            .arguments = dumpJson(Json{{"cancel", true}, {"id", result.string("id").value_or("")}})};
    const auto arguments = parseJson(call.arguments);
    const bool isMadeAgain = kind == &ReminderQuestions::whichReminder || (arguments && memberOf(*arguments, "later"));
    return {.kind = kind,
        .question = question,
        .task = result.string("task").value_or(""),
        .date = ToolResults::dateIn(result.json(), "date"),
        .repeat = result.string("repeat").value_or(""),
        .choices = ReminderReply::choices(result.json()),
        .settled = ReminderReply::settled(result.json()),
        .tool = isMadeAgain ? call.name : std::string(),
        .arguments = isMadeAgain ? call.arguments : std::string()};
}

/// "It" is the only reminder that the result tells of, unless that is done for good.
void noteTopic(const ToolResult& result, const std::vector<FoundThing>& listed, RequestMemory& memory)
{
    if (listed.size() > 1)
        return;
    const FoundThing reminder = listed.empty() ? ToolResults::thing(result.json(), form) : listed.front();
    if (reminder.id.empty())
        return;
    const bool isOver = result.status() == ToolStatus::done && !memberOf(result.json(), "next");
    memory.reminder = isOver ? FoundThing() : reminder;
    memory.talkOf(isOver ? std::string_view() : ReminderCalls::skill);
}

/// What "the second one" points into from now on: what was told, and nothing behind it.
void noteList(std::vector<FoundThing> listed, RequestMemory& memory)
{
    if (listed.empty())
        return;
    memory.found = std::move(listed);
    if (memory.pending.isOpen())
        return;
    std::erase_if(memory.found, [&](const FoundThing& thing) { return !memory.tellsOf(thing); });
    memory.found.resize(std::min(memory.found.size(), RequestMemory::mostTold));
}

/// Moved by its name to a day: the hour is the one that it has. Where not one alone has the name, its owner sees to it.
RuleStep moveFound(const std::vector<FoundThing>& listed, RequestMemory memory, const RuleSurroundings& around)
{
    const Wish wish = std::exchange(memory.wish, {});
    const auto named = Pointing::named(listed, wish.title);
    return named.size() == 1 && named.front().start
        ? ReminderRules::carryOutWith(named.front(), wish, std::move(memory), around)
        : ReminderRules::putOff(wish, std::move(memory), around);
}

/// All of them at once is more than one call can do.
RuleStep askWhichToCancel(std::vector<FoundThing> listed, const std::string& told, RequestMemory memory)
{
    memory.wish = {};
    memory.found = std::move(listed);
    if (memory.found.empty())
        return ToolResults::say(told, std::move(memory));
    return RuleStep::asking({.kind = &ReminderQuestions::whichReminder,
                                .question = "I can only take away one at a time. " + told + " Which one should go?",
                                .tool = ReminderCalls::tool,
                                .arguments = dumpJson(Json{{"cancel", true}})},
        std::move(memory));
}

std::string replyFor(
    const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (result.status() == ToolStatus::reminders)
        return ReminderReply::list(result.json(), memory, around);
    const auto arguments = parseJson(call.arguments);
    const std::string said = arguments ? readString(*arguments, "text").value_or("") : "";
    return ReminderReply::reply(result, memory.request.empty() ? said : memory.request);
}

} // namespace

RuleStep ReminderResults::take(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    if (result.isFailure())
        return takeFailure(call, result, std::move(memory), around);
    if (auto asked = ToolResults::confirming(call, result, "Should I really do that?", memory))
        return *std::move(asked);
    auto listed = ToolResults::things(result.json(), "reminders", form);
    const bool isList = result.status() == ToolStatus::reminders;
    if (isList && memory.wish.kind == Wish::Kind::move)
        return moveFound(listed, std::move(memory), around);
    std::string reply = replyFor(call, result, memory, around);
    if (isList && memory.wish.kind == Wish::Kind::cancel && memory.wish.scope == Wish::Scope::all)
        return askWhichToCancel(std::move(listed), reply, std::move(memory));
    noteTopic(result, listed, memory);
    memory.pending = pendingIn(call, result, reply);
    noteList(std::move(listed), memory);
    return ToolResults::say(std::move(reply), std::move(memory));
}

} // namespace quorvell
