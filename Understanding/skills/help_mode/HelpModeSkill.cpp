// SPDX-License-Identifier: MIT
#include "Understanding/skills/help_mode/HelpModeSkill.h"

#include "QuorvellCore/live/history/ModeIntent.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/dialogue/reach/OutOfReach.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view tools[] = {"set_mode"};

std::optional<Request> readSaid(const std::string& words, const RuleSurroundings& around)
{
    const auto mode = ModeIntent::requested(words);
    // "Show me how to make an omelette" is no wish to be shown things on the screen.
    const bool isOther = mode
        && (OutOfReach::of(words) || OutOfReach::of(RequestText::withoutClosing(RequestText::withoutOpening(words))));
    if (!mode || isOther || !around.offers("set_mode"))
        return std::nullopt;
    return Request{.answer = [mode](RequestMemory memory, const RuleSurroundings& surroundings) {
        return RuleStep{ToolCalls::call(surroundings, "set_mode", {{"mode", nameOf(*mode)}}, "change how I help"),
            std::move(memory)};
    }};
}

std::string replyFor(const ToolRequest& call, const ToolResult& result)
{
    if (result.status() == ToolStatus::refused)
        return "That stays as it is. You can switch it yourself at any time.";
    const auto arguments = parseJson(call.arguments);
    const std::string mode = arguments ? readString(*arguments, "mode").value_or("") : "";
    if (mode == "guide")
        return "All right, I will show you and you do it.";
    return mode == "do" ? "All right, I will do it for you." : "All right, I will do the simple things myself.";
}

RuleStep takeResult(const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings&)
{
    if (auto failure = ToolResults::failure(result))
        return ToolResults::say(*std::move(failure), std::move(memory));
    if (auto asked = ToolResults::confirming(call, result, "Should I really do that?", memory))
        return *std::move(asked);
    return ToolResults::say(replyFor(call, result), std::move(memory));
}

} // namespace

constinit const Skill HelpModeSkill::row{
    .name = "help mode",
    .tools = tools,
    .readSaid = readSaid,
    .takeResult = takeResult,
};

} // namespace quorvell
