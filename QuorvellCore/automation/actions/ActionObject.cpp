// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/actions/ActionObject.h"

#include <vector>

namespace quorvell {

namespace {

std::string menuText(const std::vector<std::string>& path)
{
    std::string text;
    for (const std::string& item : path)
        (text += text.empty() ? "" : " > ") += item;
    return text;
}

} // namespace

std::string actionObject(const AutomationAction& action, const std::string& element)
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

} // namespace quorvell
