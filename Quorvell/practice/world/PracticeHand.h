// SPDX-License-Identifier: MIT
// Carries out one action in a practice world, as an application and a desktop would take it.
#pragma once

#include "Quorvell/practice/world/PracticeState.h"
#include "Quorvell/practice/world/PracticeView.h"
#include "Quorvell/surface/Screen.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"

#include <chrono>
#include <string>
#include <vector>

namespace quorvell {

/// What came of an action, and after what time its application tells.
struct PracticeOutcome {
    ScreenOutcome outcome{};
    std::chrono::milliseconds delay{};

    bool operator==(const PracticeOutcome&) const = default;
};

/// Targets are names of elements; typed text holds no line feed.
class PracticeHand {
public:
    /// Borrowed for one action.
    explicit PracticeHand(PracticeState& state)
        : m_state(state)
        , m_view(PracticeView::of(state))
    {
    }

    PracticeOutcome operator()(const AutomationAction& action);
    PracticeOutcome operator()(const screen_action::ReplaceText& action);
    PracticeOutcome operator()(const screen_action::ClickSpot& action);
    PracticeOutcome operator()(const screen_action::Drag& action);
    PracticeOutcome operator()(const screen_action::ChooseOption& action);
    PracticeOutcome operator()(const screen_action::BrowserControl& action);
    PracticeOutcome operator()(const screen_action::QuickAction& action);

private:
    PracticeOutcome press(const PracticeShown& shown);
    PracticeOutcome type(const std::string& target, const std::string& text, std::string before);
    PracticeOutcome choose(const PracticeShown& shown, const std::string& option);
    PracticeOutcome pressKey(const std::string& key);
    PracticeOutcome pressReturn(const PracticeShown* focused);
    PracticeOutcome submit(const PracticeShown& field);
    PracticeOutcome escape();
    PracticeOutcome closeFront();
    PracticeOutcome moveFocus();
    PracticeOutcome chooseMenu(const std::vector<std::string>& path);
    PracticeOutcome openWebsite(const std::string& address);
    PracticeOutcome switchTab(const std::string& tab, bool isClosing);
    /// The value became this one by the user's hand.
    PracticeOutcome change(const PracticeElement& element, std::string value);
    /// What the application answers to something that it took.
    static PracticeOutcome answerOf(const PracticeElement& element);
    const PracticeShown* focused() const;
    const PracticeShown* usable(bool PracticeElement::*flag) const;

    PracticeState& m_state;
    PracticeView m_view; ///< Before the action.
};

} // namespace quorvell
