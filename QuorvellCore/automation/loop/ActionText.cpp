// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/loop/ActionText.h"

#include "QuorvellCore/automation/actions/ActionObject.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>

namespace quorvell {

namespace {

/// The id itself where nothing on the screen has it.
std::string elementName(const std::string& id, const AutomationObservation& observation)
{
    const auto& candidates = observation.candidates;
    const auto element = std::find_if(
        candidates.begin(), candidates.end(), [&](const AutomationCandidate& candidate) { return candidate.id == id; });
    if (element == candidates.end())
        return id;
    const auto number = std::count_if(candidates.begin(), element + 1, [&](const AutomationCandidate& candidate) {
        return candidate.role == element->role && candidate.label == element->label;
    });
    const std::string& name = element->label.empty() ? element->role : element->label;
    return number == 1 ? name : name + " (" + std::to_string(number) + ")";
}

std::string argumentText(const AutomationAction& action, const AutomationObservation& observation)
{
    const std::string element = action.target ? elementName(*action.target, observation) : "";
    if (action.tool == AutomationAction::Tool::typeText)
        return element + ": " + action.text.value_or("");
    const std::string object = actionObject(action, element);
    return action.tool == AutomationAction::Tool::pressKey ? lowerCased(object) : object;
}

} // namespace

std::string actionText(const AutomationAction& action, const AutomationObservation& observation)
{
    return std::string(storedText(action.tool)) + ' ' + argumentText(action, observation);
}

} // namespace quorvell
