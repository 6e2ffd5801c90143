// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderResults.h"

#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderQuery.h"
#include "Understanding/skills/reminders/ReminderQuestions.h"
#include "Understanding/skills/reminders/ReminderReply.h"
#include "Understanding/skills/reminders/ReminderRules.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t mostAtOnce = 20; ///< So many changes a session makes for one request.
constexpr ToolResults::ThingForm form{ReminderCalls::skill, "task", "date"};

/// People tell what they have done whether a reminder asked them to or not.
std::string failureReply(const Json& arguments, const ToolResult& result)
{
    if (result.failure() == ToolFailure::noReminderDue)
        return "Nothing was changed: no reminder is due. Please say which one you mean.";
    if (result.failure() != ToolFailure::noReminderWithWords)
        return ToolResults::forUser(result.wordsForModel());
    if (memberOf(arguments, "done"))
        return "There was no reminder for that.";
    return memberOf(arguments, "cancel") ? "I found no reminder for that, so nothing is changed."
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
    RuleStep step = ToolResults::say(failureReply(arguments, result), std::move(memory));
    step.isNotFound = result.failure() == ToolFailure::noReminderWithWords;
    return step;
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

/// "Delete all my reminders": told which they are, and asked. `told` is the list in words.
RuleStep askToCancelAll(
    std::vector<FoundThing> listed, const std::string& told, RequestMemory memory, const RuleSurroundings& around)
{
    memory.wish = {};
    std::erase_if(listed, [&](const FoundThing& thing) { return !memory.tellsOf(thing); });
    memory.found = listed;
    memory.found.resize(std::min(listed.size(), RequestMemory::mostTold));
    if (listed.empty())
        return ToolResults::say(told, std::move(memory));
    if (listed.size() == 1) { // One is told by what becomes of it, and can be set again.
        const auto call = ReminderCalls{around}.cancelThis(listed.front().id, !memory.days);
        return {call, std::move(memory)};
    }
    const bool areTooMany = listed.size() > mostAtOnce;
    listed.resize(std::min(listed.size(), mostAtOnce));
    const bool isOfSeries = !memory.days; // "For tomorrow" ends nothing that comes every day.
    const Json first{{"cancel", true}, {"id", listed.front().id}, {"series", isOfSeries}};
    const bool goesOn = !isOfSeries && std::ranges::any_of(listed, &FoundThing::repeats);
    const std::string which = (areTooMany ? "the first " : "all ") + std::to_string(listed.size());
    const std::string question = told + " Should I really delete " + which + (goesOn ? ", this time only?" : "?");
    memory.batch = {.left = std::move(listed), .isOfSeries = isOfSeries};
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = question,
                                .tool = ReminderCalls::tool,
                                .arguments = dumpJson(first)},
        std::move(memory));
}

/// Whether the call was for the first one of those that go.
bool isOfBatch(const ToolRequest& call, const RequestMemory& memory)
{
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    return !memory.batch.left.empty() && memberOf(arguments, "cancel")
        && readString(arguments, "id") == memory.batch.left.front().id;
}

std::string batchReply(const RequestMemory::Batch& batch)
{
    std::string reply = batch.done == 0 ? "No reminder was deleted."
        : batch.done == 1               ? "One reminder is deleted. Its note stays in your notebook."
                          : std::to_string(batch.done) + " reminders are deleted. Their notes stay in your notebook.";
    for (const std::string& title : batch.goesOn)
        reply += " It comes again: " + title + ".";
    const std::size_t named = std::min(batch.failed.size(), RequestMemory::mostTold);
    for (std::size_t index = 0; index < named; ++index)
        reply += (index == 0 ? " I could not delete: " : ", ") + batch.failed[index];
    return reply
        + (named < batch.failed.size() ? " and " + std::to_string(batch.failed.size() - named) + " more."
                : named > 0            ? "."
                                       : "");
}

RuleStep goOnWithBatch(const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    RequestMemory::Batch& batch = memory.batch;
    const bool isDone = result.status() == ToolStatus::done;
    batch.done += isDone ? 1 : 0;
    if (memberOf(result.json(), "next"))
        batch.goesOn.push_back(batch.left.front().title);
    if (!isDone)
        batch.failed.push_back(batch.left.front().title);
    batch.left.erase(batch.left.begin());
    const bool isRefused = !isDone && result.failure() != ToolFailure::noReminderWithID;
    if (isRefused) { // The others would be, too.
        std::ranges::transform(batch.left, std::back_inserter(batch.failed), &FoundThing::title);
        batch.left.clear();
    }
    if (!batch.left.empty()) {
        const auto next = ReminderCalls{around}.cancelThis(batch.left.front().id, batch.isOfSeries);
        return {next, std::move(memory)};
    }
    const std::string reply = batchReply(std::exchange(batch, {}));
    memory.reminder = {};
    memory.talkOf({});
    return ToolResults::say(reply, std::move(memory));
}

/// "At 7:45", said at ten past seven, is in 35 minutes: of the halves of the day, the one that comes within hours.
std::optional<RuleStep> setSoon(
    const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr int soonMinutes = 3 * 60;
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    const std::string task = result.string("task").value_or("");
    if (result.status() != ToolStatus::whichTime || memberOf(arguments, "later") || memberOf(arguments, "id")
        || task.empty() || !result.string("repeat").value_or("").empty())
        return std::nullopt;
    const auto choices = ReminderReply::choices(result.json());
    const DateParts now = DateParts::from(around.now, around.calendar);
    const DateParts soon = now.adding(soonMinutes);
    const auto near = [&](const TimeChoice& choice) {
        return !choice.date.allDay && choice.date > now && choice.date <= soon;
    };
    if (choices.size() < 2 || std::ranges::count_if(choices, near) != 1)
        return std::nullopt;
    const auto chosen = std::ranges::find_if(choices, near);
    return RuleStep{ReminderCalls{around}.setAt(task, chosen->date, ""), memory};
}

std::string replyFor(
    const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (result.status() == ToolStatus::reminders)
        return ReminderReply::list(result.json(), memory, around);
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    const std::string said = memory.request.empty() ? readString(arguments, "text").value_or("") : memory.request;
    if (result.status() == ToolStatus::done && memberOf(arguments, "cancel"))
        return ReminderReply::cancelled(result, said);
    return ReminderReply::reply(result, said);
}

} // namespace

RuleStep ReminderResults::take(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    if (isOfBatch(call, memory))
        return goOnWithBatch(result, std::move(memory), around);
    if (result.isFailure())
        return takeFailure(call, result, std::move(memory), around);
    if (auto asked = ToolResults::confirming(call, result, "Should I really do that?", memory))
        return *std::move(asked);
    auto listed = ToolResults::things(result.json(), "reminders", form);
    const bool isList = result.status() == ToolStatus::reminders;
    if (isList && memory.wish.kind == Wish::Kind::move)
        return moveFound(listed, std::move(memory), around);
    if (isList && memory.wish.kind == Wish::Kind::tellNext)
        return ReminderQuery::tell(listed, std::move(memory), around);
    if (auto step = setSoon(call, result, memory, around))
        return *std::move(step);
    std::string reply = replyFor(call, result, memory, around);
    if (isList && memory.wish.kind == Wish::Kind::cancel && memory.wish.scope == Wish::Scope::all)
        return askToCancelAll(std::move(listed), reply, std::move(memory), around);
    noteTopic(result, listed, memory);
    memory.pending = pendingIn(call, result, reply);
    noteList(std::move(listed), memory);
    return ToolResults::say(std::move(reply), std::move(memory));
}

} // namespace quorvell
