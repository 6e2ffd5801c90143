// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderResults.h"

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
    return memberOf(arguments, "done") ? "All right. There was no reminder for that."
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
    return result.status() == ToolStatus::whichReminder ? &ReminderQuestions::whichReminder : nullptr;
}

PendingQuestion pendingIn(const ToolRequest& call, const ToolResult& result, const std::string& question)
{
    const QuestionKind* kind = questionIn(result);
    if (!kind)
        return {};
    const auto arguments = parseJson(call.arguments);
    const bool isMadeAgain = kind == &ReminderQuestions::whichReminder || (arguments && memberOf(*arguments, "later"));
    return {.kind = kind,
        .question = question,
        .task = result.string("task").value_or(""),
        .date = ToolResults::dateIn(result.json(), "date"),
        .repeat = result.string("repeat").value_or(""),
        .choices = ReminderReply::choices(result.json()),
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

std::string replyFor(const ToolRequest& call, const ToolResult& result, const RequestMemory& memory)
{
    if (result.status() == ToolStatus::reminders)
        return ReminderReply::list(result.json(), memory);
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
    std::string reply = replyFor(call, result, memory);
    auto listed = ToolResults::things(result.json(), "reminders", form);
    noteTopic(result, listed, memory);
    memory.pending = pendingIn(call, result, reply);
    noteList(std::move(listed), memory);
    return ToolResults::say(std::move(reply), std::move(memory));
}

} // namespace quorvell
