// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/actions/AutomationAction.h"

#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quorvell {

namespace {

/// Looks no further than the limit: a text from outside has any length.
bool hasUnitsWithin(std::string_view text, std::size_t limit)
{
    std::size_t units = 0;
    for (std::size_t position = 0; position < text.size() && units <= limit;)
        units += nextCodePoint(text, position) > 0xFFFF ? 2u : 1u;
    return units <= limit;
}

bool isBlank(std::string_view text)
{
    return trimmed(text).empty();
}

bool isNamed(const std::optional<std::string>& text, std::size_t limit)
{
    return text && hasUnitsWithin(*text, limit) && !isBlank(*text);
}

bool isTypeable(const std::optional<std::string>& text)
{
    return text && !text->empty() && hasUnitsWithin(*text, AutomationAction::longestTextUnits)
        && characterCount(*text) <= AutomationAction::longestText;
}

bool isSupportedKey(const std::optional<std::string>& key)
{
    const auto& keys = AutomationAction::supportedKeys();
    return key && std::find(keys.begin(), keys.end(), lowerCased(*key)) != keys.end();
}

bool isMenuPath(const std::optional<std::vector<std::string>>& path)
{
    return path && !path->empty() && path->size() <= AutomationAction::deepestMenu
        && std::all_of(path->begin(), path->end(),
            [](const std::string& item) { return isNamed(item, AutomationAction::longestMenuItem); });
}

} // namespace

const std::array<std::string_view, 22>& AutomationAction::supportedKeys()
{
    static constexpr std::array<std::string_view, 22> keys = {"return", "tab", "space", "escape", "delete", "left",
        "right", "down", "up", "page up", "page down", "home", "end", "command+plus", "command+minus", "command+0",
        "command+f", "command+l", "command+t", "command+w", "command+r", "command+n"};
    return keys;
}

Json AutomationAction::arguments() const
{
    Json arguments = Json::object();
    const auto add = [&arguments](const char* argument, const auto& value) {
        if (value)
            arguments[argument] = *value;
    };
    add("element_id", target);
    add("text", text);
    add("key", key);
    add("path", path);
    add("name", name);
    add("address", address);
    add("direction", direction);
    return arguments;
}

bool AutomationAction::isValid(const AutomationObservation& observation) const
{
    const AutomationCandidate* element = target ? observation.usableTarget(*target) : nullptr;
    switch (tool) {
    case Tool::click:
        return element;
    case Tool::typeText:
        return element && ElementRole::isTextEntry(element->role) && isTypeable(text);
    case Tool::pressKey:
        return isSupportedKey(key);
    case Tool::scroll:
        return (direction == "up" || direction == "down") && (!target || element);
    case Tool::chooseMenu:
        return isMenuPath(path);
    case Tool::openApp:
        return isNamed(name, longestName);
    case Tool::openWebsite:
        return isNamed(address, longestAddress);
    }
    return false;
}

std::string_view storedText(AutomationAction::Tool tool)
{
    switch (tool) {
    case AutomationAction::Tool::click:
        return "click";
    case AutomationAction::Tool::typeText:
        return "type_text";
    case AutomationAction::Tool::pressKey:
        return "press_key";
    case AutomationAction::Tool::scroll:
        return "scroll";
    case AutomationAction::Tool::chooseMenu:
        return "choose_menu";
    case AutomationAction::Tool::openApp:
        return "open_app";
    case AutomationAction::Tool::openWebsite:
        return "open_website";
    }
    return "click";
}

std::optional<AutomationAction::Tool> automationTool(std::string_view stored)
{
    for (const AutomationAction::Tool tool : allAutomationTools) {
        if (storedText(tool) == stored)
            return tool;
    }
    return std::nullopt;
}

} // namespace quorvell
