// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PimNextStep.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

#include <utility>

namespace quorvell {

std::string PimNextStep::goal(std::string_view task, std::string_view next)
{
    const std::string cut = firstCharacters(trimmed(task), longestTask);
    return (cut.empty() ? "" : cut + "\n") + "Next step: " + std::string(next);
}

std::optional<DecisionContext> PimNextStep::context(DecisionContext context, std::string_view next)
{
    constexpr std::size_t mostBytesOfCharacter = 64; // What is longer than this is not read for its characters.
    if (next.size() > longestStep * mostBytesOfCharacter)
        return std::nullopt;
    const std::string step = onOneLine(next);
    if (step.empty() || characterCount(step) > longestStep)
        return std::nullopt;
    context.goal = goal(context.goal, step);
    return context;
}

PimSelector PimNextStep::selector(PimSelector general)
{
    general.thresholds = PimThresholds::standard();
    general.thresholds.sensitivity = sensitivity;
    general.timeout = timeout;
    general.operationInstructions = operationInstructions;
    general.targetInstructions = targetInstructions;
    return general;
}

} // namespace quorvell
