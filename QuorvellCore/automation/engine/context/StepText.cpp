// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/context/StepText.h"

#include "QuorvellCore/automation/engine/context/StepTaken.h"
#include "QuorvellCore/safety/SpokenLabel.h"

namespace quorvell {

namespace {

std::string_view verbOf(AutomationAction::Tool tool)
{
    switch (tool) {
    case AutomationAction::Tool::click:
    case AutomationAction::Tool::pressKey:
        return "press ";
    case AutomationAction::Tool::typeText:
        return "type into ";
    case AutomationAction::Tool::scroll:
        return "scroll ";
    case AutomationAction::Tool::chooseMenu:
        return "choose ";
    case AutomationAction::Tool::openApp:
    case AutomationAction::Tool::openWebsite:
        return "open ";
    }
    return "do ";
}

} // namespace

std::string stepAnnouncement(const AutomationAction& action, const AutomationObservation& observation)
{
    const std::string target = stepTaken(action, observation, true).target;
    const bool isOurs =
        action.tool == AutomationAction::Tool::scroll || action.tool == AutomationAction::Tool::pressKey;
    return "I'll " + std::string(verbOf(action.tool)) + (isOurs ? target : SpokenLabel::quoted(target)) + ".";
}

} // namespace quorvell
