// SPDX-License-Identifier: MIT
#include "Understanding/skills/screen/ScreenSkill.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/screen/ScreenWish.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view name = "screen";
constexpr std::string_view tools[] = {"do_task", "confirm_action"};

RuleStep carryOut(const std::string& goal, RequestMemory memory, const RuleSurroundings& around)
{
    memory.talkOf(name);
    return {ToolCalls::call(around, "do_task", {{"goal", goal}}, "work other applications"), std::move(memory)};
}

Request denied()
{
    return {.answer = [](RequestMemory memory, const RuleSurroundings&) {
        return ToolResults::say("All right. I have done nothing.", std::move(memory));
    }};
}

/// Where nothing on the screen can be worked it is no wish for this skill: what can be done is told instead.
std::optional<Request> readStatement(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern denial("^(?:please )?(?:do not|don['’]?t|never) ", Pattern::caseless);
    if (!around.offers("do_task"))
        return std::nullopt;
    if (denial.find(core))
        return ScreenWish::isOne(denial.replaceAll(core, "")) ? std::optional(denied()) : std::nullopt;
    if (!ScreenWish::isOne(core))
        return std::nullopt;
    return Request{
        .answer = [core](RequestMemory memory,
                      const RuleSurroundings& surroundings) { return carryOut(core, std::move(memory), surroundings); },
        .isForOthers = true};
}

std::string ability(const RuleSurroundings& around)
{
    return around.offers("do_task") ? "do one simple thing at a time in other applications" : "";
}

std::string questionBefore(const ToolRequest& call)
{
    if (call.name != "do_task")
        return "Should I do that?";
    const auto arguments = parseJson(call.arguments);
    const std::string goal = arguments ? readString(*arguments, "goal").value_or("") : "";
    return goal.empty() ? "Should I do that?" : "Should I do that: " + goal + "?";
}

/// What waits for a yes is carried out by a call of its own; the one that asked for it is over.
RuleStep askFor(const ToolResult& result, const RequestMemory& memory)
{
    const std::string question = result.wordsForUser();
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = question.empty() ? "Shall I go ahead?" : question,
                                .tool = "confirm_action",
                                .arguments = "{}"},
        memory);
}

std::string replyFor(const ToolRequest& call, const ToolResult& result)
{
    switch (result.status()) {
    case ToolStatus::refused:
        return call.name == "confirm_action"
            ? "I did not do that, because I heard no clear yes."
            : "At the moment I only show you how. Say \"do it for me\" if I should do such things myself.";
    case ToolStatus::stopped:
        return "Stopped.";
    case ToolStatus::gaveUp:
        return ToolResults::forUser(result.string("message").value_or("I could not get that done."));
    default:
        return ToolResults::forUser(result.string("message").value_or("Done."));
    }
}

RuleStep takeResult(const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings&)
{
    if (auto failure = ToolResults::failure(result))
        return ToolResults::say(*std::move(failure), std::move(memory));
    if (result.status() == ToolStatus::needsConfirmation)
        return askFor(result, memory);
    // A question about the goal: the answer is a wish of its own.
    if (result.status() == ToolStatus::needsUser)
        return ToolResults::say(ToolResults::forUser(result.wordsForUser()), std::move(memory));
    return ToolResults::say(replyFor(call, result), std::move(memory));
}

std::optional<RuleStep> undo(RequestMemory memory, const RuleSurroundings& around)
{
    return around.offers("do_task") ? std::optional(carryOut("undo that", std::move(memory), around)) : std::nullopt;
}

} // namespace

constinit const Skill ScreenSkill::row{
    .name = name,
    .tools = tools,
    .ability = ability,
    .example = "scroll down",
    .readStatement = readStatement,
    .questionBefore = questionBefore,
    .takeResult = takeResult,
    .undoesByItself = true,
    .undo = undo,
};

} // namespace quorvell
