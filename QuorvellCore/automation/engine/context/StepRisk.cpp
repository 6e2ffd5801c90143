// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/context/StepRisk.h"

#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/safety/SafetyGuard.h"

#include <algorithm>

namespace quorvell {

namespace {

bool isTyping(const AutomationObservation& observation)
{
    return std::any_of(
        observation.candidates.begin(), observation.candidates.end(), [](const AutomationCandidate& candidate) {
            return candidate.focused && ElementRole::isTextEntry(candidate.role);
        });
}

ActionRisk menuRisk(const std::vector<std::string>& path, const std::string& app)
{
    ActionRisk risk = ActionRisk::safe();
    for (const std::string& item : path)
        risk = ActionRisk::strictest(risk, SafetyGuard::risk(item, "AXMenuItem", app));
    return risk;
}

ActionRisk addressRisk(const std::string& address)
{
    return ActionRisk::strictest(SafetyGuard::websiteRisk(address), SafetyGuard::siteRisk(address));
}

} // namespace

ActionRisk stepRisk(const AutomationAction& action, const AutomationObservation& observation)
{
    const AutomationCandidate* found = action.target ? observation.usableTarget(*action.target) : nullptr;
    const AutomationCandidate element = found ? *found : AutomationCandidate{};
    switch (action.tool) {
    case AutomationAction::Tool::click:
        return SafetyGuard::risk(element.label, element.role, observation.app);
    case AutomationAction::Tool::typeText:
        return ActionRisk::strictest(
            SafetyGuard::fieldRisk(element.label, element.role), SafetyGuard::textRisk(action.text.value_or("")));
    case AutomationAction::Tool::pressKey:
        return SafetyGuard::keyRisk(action.key.value_or(""), 0, isTyping(observation));
    case AutomationAction::Tool::scroll:
        return ActionRisk::safe();
    case AutomationAction::Tool::chooseMenu:
        return menuRisk(action.path.value_or(std::vector<std::string>{}), observation.app);
    case AutomationAction::Tool::openApp:
        return SafetyGuard::appRisk(action.name.value_or(""));
    case AutomationAction::Tool::openWebsite:
        return addressRisk(action.address.value_or(""));
    }
    return ActionRisk::safe();
}

} // namespace quorvell
