// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ScreenActionText.h"

#include "QuorvellCore/automation/loop/ActionText.h"

#include <cmath>
#include <string_view>

namespace quorvell {

namespace {

std::string_view wordFor(screen_action::BrowserControl::Kind kind)
{
    using Kind = screen_action::BrowserControl::Kind;
    switch (kind) {
    case Kind::back:
        return "back";
    case Kind::forward:
        return "forward";
    case Kind::reload:
        return "reload";
    case Kind::newTab:
        return "new_tab";
    case Kind::closeTab:
        return "close_tab";
    case Kind::switchTab:
        return "switch_tab";
    }
    return "";
}

std::string_view wordFor(screen_action::QuickAction::Kind kind)
{
    using Kind = screen_action::QuickAction::Kind;
    switch (kind) {
    case Kind::volume:
        return "volume";
    case Kind::mute:
        return "mute";
    case Kind::unmute:
        return "unmute";
    case Kind::brightness:
        return "brightness";
    case Kind::playPause:
        return "play_pause";
    case Kind::nextTrack:
        return "next_track";
    case Kind::previousTrack:
        return "previous_track";
    case Kind::doNotDisturb:
        return "do_not_disturb";
    case Kind::lockScreen:
        return "lock_screen";
    case Kind::screenshot:
        return "screenshot";
    case Kind::showDesktop:
        return "show_desktop";
    }
    return "";
}

std::string withValue(std::string_view tool, std::string_view word, const std::string& value)
{
    return std::string(tool) + ' ' + std::string(word) + (value.empty() ? "" : ' ' + value);
}

/// Whole places: a thousandth of the screen is no other place.
std::string place(double x, double y)
{
    return std::to_string(std::lround(x)) + ", " + std::to_string(std::lround(y));
}

struct ActionDescription {
    const AutomationObservation& observation;

    std::string typing(const std::string& target, const std::string& text) const
    {
        return actionText({.tool = AutomationAction::Tool::typeText, .target = target, .text = text}, observation);
    }
    std::string operator()(const AutomationAction& action) const { return actionText(action, observation); }
    std::string operator()(const screen_action::ReplaceText& action) const
    {
        return typing(action.target, action.text);
    }
    std::string operator()(const screen_action::ChooseOption& action) const
    {
        constexpr std::string_view typed = "type_text";
        return "choose_option" + typing(action.target, action.option).substr(typed.size());
    }
    std::string operator()(const screen_action::ClickSpot& action) const
    {
        return "click_at_spot " + place(action.x, action.y);
    }
    std::string operator()(const screen_action::Drag& action) const
    {
        return "drag " + place(action.x, action.y) + " to " + place(action.toX, action.toY);
    }
    std::string operator()(const screen_action::BrowserControl& action) const
    {
        return withValue("browser_control", wordFor(action.kind), action.tab);
    }
    std::string operator()(const screen_action::QuickAction& action) const
    {
        return withValue("quick_action", wordFor(action.kind), action.value);
    }
};

} // namespace

std::string screenActionText(const ScreenAction& action, const AutomationObservation& observation)
{
    return std::visit(ActionDescription{observation}, action);
}

} // namespace quorvell
