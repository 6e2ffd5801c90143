// SPDX-License-Identifier: MIT
// One thing to do on the screen: a step of the closed vocabulary, or one of those that only a model's own tools have.
#pragma once

#include "QuorvellCore/automation/actions/AutomationAction.h"

#include <optional>
#include <string>
#include <variant>

namespace quorvell {

namespace screen_action {

/// Places run from 0 (left or top edge of the latest image) to 1000.
struct ClickSpot {
    double x = 0;
    double y = 0;
    bool operator==(const ClickSpot&) const = default;
};
struct Drag {
    double x = 0;
    double y = 0;
    double toX = 0;
    double toY = 0;
    bool operator==(const Drag&) const = default;
};
/// An entry of a pop-up menu, combo box, list or group.
struct ChooseOption {
    std::string target;
    std::string option;
    bool operator==(const ChooseOption&) const = default;
};
struct BrowserControl {
    enum class Kind { back, forward, reload, newTab, closeTab, switchTab };
    Kind kind = Kind::back;
    std::string tab{}; ///< Title of a tab or a clear part of it; empty: the one in front.
    bool operator==(const BrowserControl&) const = default;
};
/// An everyday thing of the computer, without a window.
struct QuickAction {
    enum class Kind {
        volume,
        mute,
        unmute,
        brightness,
        playPause,
        nextTrack,
        previousTrack,
        doNotDisturb,
        lockScreen,
        screenshot,
        showDesktop,
    };
    Kind kind = Kind::volume;
    std::string value{};
    bool operator==(const QuickAction&) const = default;
};
/// Typing that empties the field first; without that, text is added at the end of what is there.
struct ReplaceText {
    std::string target;
    std::string text;
    bool operator==(const ReplaceText&) const = default;
};

} // namespace screen_action

using ScreenAction = std::variant<AutomationAction, screen_action::ReplaceText, screen_action::ClickSpot,
    screen_action::Drag, screen_action::ChooseOption, screen_action::BrowserControl, screen_action::QuickAction>;

} // namespace quorvell
