// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/context/StepTaken.h"

#include <algorithm>

namespace quorvell {

namespace {

std::string nameOf(const std::string& id, const AutomationObservation& observation)
{
    const auto& candidates = observation.candidates;
    const auto element = std::find_if(
        candidates.begin(), candidates.end(), [&](const AutomationCandidate& candidate) { return candidate.id == id; });
    if (element == candidates.end())
        return {};
    return element->label.empty() ? element->role : element->label;
}

std::string menuText(const std::vector<std::string>& path)
{
    std::string text;
    for (const std::string& item : path)
        (text += text.empty() ? "" : " > ") += item;
    return text;
}

std::string targetText(const AutomationAction& action, const std::string& element)
{
    switch (action.tool) {
    case AutomationAction::Tool::click:
    case AutomationAction::Tool::typeText:
        return element;
    case AutomationAction::Tool::pressKey:
        return action.key.value_or("");
    case AutomationAction::Tool::scroll:
        return action.direction.value_or("") + (element.empty() ? "" : " in " + element);
    case AutomationAction::Tool::chooseMenu:
        return menuText(action.path.value_or(std::vector<std::string>{}));
    case AutomationAction::Tool::openApp:
        return action.name.value_or("");
    case AutomationAction::Tool::openWebsite:
        return action.address.value_or("");
    }
    return {};
}

} // namespace

AutomationHistory stepTaken(const AutomationAction& action, const AutomationObservation& before, bool verified)
{
    return stepTaken(action, action.target ? nameOf(*action.target, before) : std::string(), verified);
}

AutomationHistory stepTaken(const AutomationAction& action, const std::string& element, bool verified)
{
    return {std::string(storedText(action.tool)), targetText(action, element), verified};
}

} // namespace quorvell
