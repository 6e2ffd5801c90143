// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ActionUndo.h"

#include "Quorvell/actions/pipeline/FoundAgain.h"
#include "QuorvellCore/automation/actions/AutomationAction.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

using Undo = std::variant<ActionUndo, std::string>;
using screen_action::BrowserControl;
using screen_action::QuickAction;

constexpr auto keyPairs = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"page up", "page down"},
    {"command+plus", "command+minus"},
});

/// Pressed once more they are what they were.
constexpr auto toggleRoles =
    std::to_array<std::string_view>({"AXCheckBox", "AXSwitch", "AXToggle", "AXToggleButton", "AXMenuItemCheckBox"});

/// What must show in the elements.
const Postcondition change{Postcondition::Kind::changed, {}};

const AutomationCandidate* candidateIn(const ScreenLook& look, const std::string& id)
{
    const auto found = std::ranges::find(look.observation.candidates, id, &AutomationCandidate::id);
    return found == look.observation.candidates.end() ? nullptr : &*found;
}

/// What it is done to, before and after.
struct Touched {
    const AutomationCandidate* before = nullptr;
    const AutomationCandidate* after = nullptr; ///< Null where it is not found again.
};

Touched touchedBy(const ScreenAction& action, const ScreenLook& before, const ScreenLook& after)
{
    const std::string* const id = targetOf(action);
    if (!id)
        return {};
    const auto again = foundAgain(action, before, after);
    const auto* const same = std::get_if<ScreenAction>(&again);
    return {candidateIn(before, *id), same ? candidateIn(after, *targetOf(*same)) : nullptr};
}

class UndoFinder {
public:
    UndoFinder(const ScreenAction& action, const ScreenLook& before, const ScreenLook& after)
        : m_before(before)
        , m_after(after)
        , m_touched(touchedBy(action, before, after))
    {
    }

    Undo operator()(const AutomationAction& action) const
    {
        switch (action.tool) {
        case AutomationAction::Tool::click:
            return ofClick();
        case AutomationAction::Tool::typeText:
            return ofTyping(m_touched.before ? m_touched.before->value + action.text.value_or("") : "");
        case AutomationAction::Tool::pressKey:
            return ofKey(lowerCased(action.key.value_or("")));
        case AutomationAction::Tool::scroll:
            return ofScroll(action);
        case AutomationAction::Tool::chooseMenu:
            return "What a command of a menu did is not known. The program may have an Undo of its own.";
        case AutomationAction::Tool::openApp:
            return ofOpening("The program stays open");
        case AutomationAction::Tool::openWebsite:
            return ofWebsite();
        }
        return std::string("It has no way back.");
    }
    Undo operator()(const screen_action::ReplaceText& action) const { return ofTyping(action.text); }
    Undo operator()(const screen_action::ChooseOption&) const
    {
        if (!m_touched.after || m_touched.before->value.empty() || m_touched.after->value == m_touched.before->value)
            return std::string("What was chosen before is not known.");
        return ActionUndo{screen_action::ChooseOption{m_touched.after->id, m_touched.before->value},
            "What was chosen before is chosen again.", change};
    }
    Undo operator()(const screen_action::ClickSpot&) const { return pressed; }
    Undo operator()(const screen_action::Drag&) const { return std::string("What was moved is not known."); }
    Undo operator()(const BrowserControl& action) const
    {
        using Kind = BrowserControl::Kind;
        switch (action.kind) {
        case Kind::back:
            return ActionUndo{BrowserControl{Kind::forward}, "The page from before is shown again.", change};
        case Kind::forward:
            return ActionUndo{BrowserControl{Kind::back}, "The page from before is shown again.", change};
        case Kind::newTab:
            return ActionUndo{BrowserControl{Kind::closeTab}, "The new tab is closed.", change};
        case Kind::switchTab:
            if (m_before.page && !m_before.page->title.empty())
                return ActionUndo{BrowserControl{Kind::switchTab, m_before.page->title},
                    "The tab from before is in front again.", change};
            return std::string("The tab that was in front before has no name.");
        case Kind::reload:
            return std::string("The page is loaded anew; there is nothing to take back.");
        case Kind::closeTab:
            return std::string("The tab is closed. The browser itself can open closed tabs again.");
        }
        return std::string("It has no way back.");
    }
    Undo operator()(const QuickAction& action) const
    {
        using Kind = QuickAction::Kind;
        const auto opposite = [](Kind kind, std::string value = {}) {
            return ActionUndo{QuickAction{kind, std::move(value)}, "It is as it was before."};
        };
        const std::string value = lowerCased(action.value);
        switch (action.kind) {
        case Kind::mute:
            return opposite(Kind::unmute);
        case Kind::unmute:
            return opposite(Kind::mute);
        case Kind::playPause:
        case Kind::showDesktop:
            return opposite(action.kind);
        case Kind::nextTrack:
            return opposite(Kind::previousTrack);
        case Kind::previousTrack:
            return opposite(Kind::nextTrack);
        case Kind::volume:
        case Kind::brightness:
            if (value == "up" || value == "down")
                return opposite(action.kind, value == "up" ? "down" : "up");
            return std::string("How it was set before is not known.");
        case Kind::doNotDisturb:
            if (value == "on" || value == "off")
                return opposite(action.kind, value == "on" ? "off" : "on");
            return std::string("How it was set before is not known.");
        case Kind::lockScreen:
        case Kind::screenshot:
            return std::string("It has no way back.");
        }
        return std::string("It has no way back.");
    }

private:
    inline static const std::string pressed =
        "What a press set off is not known. The program may have an Undo of its own.";

    Undo ofClick() const
    {
        if (!m_touched.after || std::ranges::find(toggleRoles, m_touched.after->role) == toggleRoles.end()
            || m_touched.after->value == m_touched.before->value)
            return pressed;
        return ActionUndo{AutomationAction{.tool = AutomationAction::Tool::click, .target = m_touched.after->id},
            "It is switched back.", change};
    }
    /// Sure only where the field holds what was typed: else it was sent, or the program made something else of it.
    Undo ofTyping(const std::string& typed) const
    {
        if (!m_touched.after)
            return std::string("The field is not found again.");
        if (m_touched.after->value != typed)
            return std::string("The field does not hold what was typed any more.");
        const AutomationCandidate& old = *m_touched.before;
        if (SafetyGuard::isSensitiveValue(old.label, old.role, old.value, old.secure))
            return std::string("What the field held before is not kept.");
        if (characterCount(old.value) > AutomationAction::longestText)
            return std::string("The field held too much before.");
        Postcondition expected = change;
        if (!TextMatch::normalized(old.value).empty())
            expected = Postcondition{Postcondition::Kind::valueContains, old.value};
        return ActionUndo{screen_action::ReplaceText{m_touched.after->id, old.value},
            old.value.empty() ? "The field is empty again." : "The field holds what it held before.",
            std::move(expected)};
    }
    Undo ofKey(const std::string& key) const
    {
        for (const auto& [one, other] : keyPairs)
            if (key == one || key == other)
                return ActionUndo{AutomationAction{.tool = AutomationAction::Tool::pressKey,
                                      .key = std::string(key == one ? other : one)},
                    "It is shown as before."};
        return std::string("What a key did is not known. The program may have an Undo of its own.");
    }
    Undo ofScroll(AutomationAction action) const
    {
        if (action.target && !m_touched.after)
            return std::string("What was scrolled is not there any more.");
        if (action.target)
            action.target = m_touched.after->id;
        action.direction = action.direction == "up" ? "down" : "up";
        return ActionUndo{std::move(action), "It is scrolled back."};
    }
    Undo ofOpening(const std::string& leftover) const
    {
        if (m_before.observation.app.empty() || m_before.observation.app == m_after.observation.app)
            return std::string("It was in front before already, or what was is not known.");
        return ActionUndo{AutomationAction{.tool = AutomationAction::Tool::openApp, .name = m_before.observation.app},
            m_before.observation.app + " is in front again. " + leftover + ".", change};
    }
    Undo ofWebsite() const
    {
        if (m_before.observation.app != m_after.observation.app)
            return ofOpening("The page stays open");
        return ActionUndo{BrowserControl{BrowserControl::Kind::back}, "The page from before is shown again.", change};
    }

    const ScreenLook& m_before;
    const ScreenLook& m_after;
    Touched m_touched;
};

} // namespace

Undo undoOf(const ScreenAction& action, const ScreenLook& before, const ScreenLook& after)
{
    return std::visit(UndoFinder(action, before, after), action);
}

} // namespace quorvell
