// SPDX-License-Identifier: MIT
// One step on the screen: the closed set of what may be done there.
#pragma once

#include "QuorvellCore/automation/screen/AutomationObservation.h"
#include "QuorvellCore/text/Json.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct AutomationAction {
    enum class Tool { click, typeText, pressKey, scroll, chooseMenu, openApp, openWebsite };

    static constexpr std::size_t longestText = 4'000; ///< User-perceived characters to type at once.
    static constexpr std::size_t longestTextUnits = 8'000; ///< The same in UTF-16 units, as are the three below.
    static constexpr std::size_t longestMenuItem = 160;
    static constexpr std::size_t longestName = 120;
    static constexpr std::size_t longestAddress = 2'048;
    static constexpr std::size_t deepestMenu = 5;

    Tool tool = Tool::click;
    std::optional<std::string> target{}; ///< The id of the element that it is done to.
    std::optional<std::string> text{};
    std::optional<std::string> key{}; ///< A key or a chord.
    std::optional<std::vector<std::string>> path{}; ///< Of a menu item, outermost first.
    std::optional<std::string> name{}; ///< Of an application.
    std::optional<std::string> address{}; ///< On the web.
    std::optional<std::string> direction{}; ///< "up" or "down".

    /// What `key` may be, in lower case.
    static const std::array<std::string_view, 22>& supportedKeys();

    /// As a model's tool call has it: the target is called "element_id", what is not set is left out.
    Json arguments() const;

    /// Whether it can be carried out on this screen. Nothing is done that is not valid on the one it was chosen for.
    bool isValid(const AutomationObservation& observation) const;

    bool operator==(const AutomationAction&) const = default;
};

inline constexpr std::array<AutomationAction::Tool, 7> allAutomationTools = {AutomationAction::Tool::click,
    AutomationAction::Tool::typeText, AutomationAction::Tool::pressKey, AutomationAction::Tool::scroll,
    AutomationAction::Tool::chooseMenu, AutomationAction::Tool::openApp, AutomationAction::Tool::openWebsite};

/// The tool's name for models: "click", "type_text", "press_key", "scroll", "choose_menu", "open_app", "open_website".
std::string_view storedText(AutomationAction::Tool tool);
std::optional<AutomationAction::Tool> automationTool(std::string_view stored);

} // namespace quorvell
