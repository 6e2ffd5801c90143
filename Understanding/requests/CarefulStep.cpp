// SPDX-License-Identifier: MIT
#include "Understanding/requests/CarefulStep.h"

#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/requests/SkillTable.h"

#include <optional>
#include <string>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* nothingChanged = "All right. I have changed nothing.";
constexpr const char* sayWhat = "I have changed nothing. If something should be changed, please say what.";

/// Empty for a call that changes nothing.
std::string questionBefore(const ToolRequest& call)
{
    const Skill* skill = SkillTable::ofCall(call);
    return skill && skill->questionBefore ? skill->questionBefore(call) : "Should I do that?";
}

bool changesWhatIsThere(const std::optional<Wish>& wish)
{
    return wish && (wish->kind == Wish::Kind::move || wish->kind == Wish::Kind::cancel);
}

} // namespace

bool CarefulStep::onlyLooksUp(const Request& request, const RuleSurroundings& around)
{
    if (changesWhatIsThere(request.wish))
        return false;
    const RuleStep step = request.answer({}, around);
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    return call ? questionBefore(*call).empty() : !step.memory.pending.isOpen();
}

bool CarefulStep::mayChange(const ToolRequest& call)
{
    return !questionBefore(call).empty();
}

RuleStep CarefulStep::take(RuleStep step, const Request& request, RequestMood mood, RequestMemory memory)
{
    const auto* call = std::get_if<ToolRequest>(&step.answer);
    const std::string question = call ? questionBefore(*call) : std::string();
    // An event is looked up before it is changed: that call is harmless by itself, and what follows from it is not.
    const bool leadsToChange = changesWhatIsThere(request.wish) && changesWhatIsThere(step.memory.wish);
    const bool isHarmless =
        question.empty() && !leadsToChange && (mood != RequestMood::denial || !step.memory.pending.isOpen());
    if (mood == RequestMood::wish || isHarmless)
        return step;
    if (mood == RequestMood::denial)
        return {nothingChanged, std::move(memory)};
    if (!call)
        return step;
    if (question.empty())
        return {sayWhat, std::move(memory)};
    return RuleStep::asking(
        {.kind = &ToolResults::confirmation, .question = question, .tool = call->name, .arguments = call->arguments},
        std::move(step.memory));
}

} // namespace quorvell
