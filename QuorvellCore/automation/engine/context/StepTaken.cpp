// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/context/StepTaken.h"

#include "QuorvellCore/automation/actions/ActionObject.h"

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

} // namespace

AutomationHistory stepTaken(const AutomationAction& action, const AutomationObservation& before, bool verified)
{
    return stepTaken(action, action.target ? nameOf(*action.target, before) : std::string(), verified);
}

AutomationHistory stepTaken(const AutomationAction& action, const std::string& element, bool verified)
{
    return {std::string(storedText(action.tool)), actionObject(action, element), verified};
}

} // namespace quorvell
