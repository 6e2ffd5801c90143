// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/FoundAgain.h"

#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Found = std::variant<ScreenAction, std::string>;

constexpr std::string_view unknownID = "No element with that id. Call look_at_screen again, then use a new id.";
constexpr std::string_view vanishedID =
    "No element with that id any more. Call look_at_screen again, then use a new id.";
constexpr std::string_view anotherFront =
    "Something else is in front now than when this was chosen, so nothing was done. Call look_at_screen again.";
constexpr std::string_view anotherPlace =
    "The screen has changed at that place, so nothing was done. Request look_at_screen with include_image true before "
    "using coordinates.";

/// Keys that only move about or change how large things are shown: in another window of the program they do the same.
constexpr auto movingKeys = std::to_array<std::string_view>({"tab", "escape", "left", "right", "down", "up", "page up",
    "page down", "home", "end", "command+plus", "command+minus", "command+0", "command+f", "command+l", "command+r"});

struct TargetOf {
    const std::string* operator()(const AutomationAction& action) const
    {
        return action.target ? &*action.target : nullptr;
    }
    const std::string* operator()(const screen_action::ReplaceText& action) const { return &action.target; }
    const std::string* operator()(const screen_action::ChooseOption& action) const { return &action.target; }
    template <typename Other> const std::string* operator()(const Other&) const { return nullptr; }
};

struct Retarget {
    const std::string& id;

    void operator()(AutomationAction& action) const { action.target = id; }
    void operator()(screen_action::ReplaceText& action) const { action.target = id; }
    void operator()(screen_action::ChooseOption& action) const { action.target = id; }
    template <typename Other> void operator()(Other&) const { }
};

bool isSameApp(const ScreenLook& before, const ScreenLook& now)
{
    return before.observation.app == now.observation.app && before.appIdentifier == now.appIdentifier;
}

bool isSameWindow(const ScreenLook& before, const ScreenLook& now)
{
    return isSameApp(before, now) && before.observation.window == now.observation.window;
}

bool isAlike(const AutomationCandidate* one, const AutomationCandidate* other)
{
    return one && other ? one->role == other->role && one->label == other->label : one == other;
}

const AutomationCandidate* focusedIn(const ScreenLook& look)
{
    const auto found = std::ranges::find(look.observation.candidates, true, &AutomationCandidate::focused);
    return found == look.observation.candidates.end() ? nullptr : &*found;
}

const AutomationCandidate* pressedByReturnIn(const ScreenLook& look)
{
    const auto found = std::ranges::find(look.elements, true, &ScreenElement::isDefault);
    const auto place = static_cast<std::size_t>(found - look.elements.begin());
    return place < look.observation.candidates.size() ? &look.observation.candidates[place] : nullptr;
}

std::string_view addressOf(const ScreenLook& look, const std::string& id)
{
    const ScreenElement* const element = look.element(id);
    return element ? std::string_view(element->address) : std::string_view();
}

std::variant<std::string, std::string_view> elementAgain(
    const std::string& id, const ScreenLook& before, const ScreenLook& now)
{
    const auto& known = before.observation.candidates;
    const auto& shown = now.observation.candidates;
    const auto chosen = std::ranges::find(known, id, &AutomationCandidate::id);
    if (chosen == known.end() || std::ranges::count(known, id, &AutomationCandidate::id) != 1)
        return unknownID;
    if (isSameApp(before, now) && before.observation.stateKey() == now.observation.stateKey())
        return shown[static_cast<std::size_t>(chosen - known.begin())].id;
    const auto isIt = [&](const AutomationCandidate& candidate) { return isAlike(&candidate, &*chosen); };
    const auto found = std::find_if(shown.begin(), shown.end(), isIt);
    if (!isSameApp(before, now) || chosen->label.empty() || found == shown.end()
        || std::find_if(found + 1, shown.end(), isIt) != shown.end()
        || addressOf(now, found->id) != addressOf(before, id))
        return vanishedID;
    return found->id;
}

std::vector<std::pair<double, double>> placesOf(const ScreenAction& action)
{
    if (const auto* click = std::get_if<screen_action::ClickSpot>(&action))
        return {{click->x, click->y}};
    if (const auto* drag = std::get_if<screen_action::Drag>(&action))
        return {{drag->x, drag->y}, {drag->toX, drag->toY}};
    return {};
}

std::string_view problemAtPlaces(const ScreenAction& action, const ScreenLook& before, const ScreenLook& now)
{
    for (const auto& [x, y] : placesOf(action))
        if (!isAlike(before.elementAt(x, y), now.elementAt(x, y)) || !isSameWindow(before, now))
            return anotherPlace;
    return {};
}

std::string_view problemInFront(const AutomationAction& action, const ScreenLook& before, const ScreenLook& now)
{
    const bool isKey = action.tool == AutomationAction::Tool::pressKey;
    if (isKey && std::ranges::find(movingKeys, lowerCased(action.key.value_or(""))) != movingKeys.end())
        return {};
    if (!isSameWindow(before, now))
        return anotherFront;
    if (isKey
        && !(isAlike(focusedIn(before), focusedIn(now)) && isAlike(pressedByReturnIn(before), pressedByReturnIn(now))))
        return anotherFront;
    return {};
}

} // namespace

const std::string* targetOf(const ScreenAction& action)
{
    return std::visit(TargetOf{}, action);
}

bool dependsOnFront(const ScreenAction& action)
{
    if (const auto* step = std::get_if<AutomationAction>(&action))
        return step->tool == AutomationAction::Tool::pressKey || step->tool == AutomationAction::Tool::chooseMenu;
    return std::holds_alternative<screen_action::ClickSpot>(action)
        || std::holds_alternative<screen_action::Drag>(action)
        || std::holds_alternative<screen_action::BrowserControl>(action);
}

Found foundAgain(const ScreenAction& action, const ScreenLook& before, const ScreenLook& now)
{
    ScreenAction again = action;
    if (const std::string* const id = targetOf(action)) {
        const auto found = elementAgain(*id, before, now);
        if (const auto* problem = std::get_if<std::string_view>(&found))
            return std::string(*problem);
        std::visit(Retarget{std::get<std::string>(found)}, again);
    }
    if (!dependsOnFront(action))
        return again;
    if (!isSameApp(before, now))
        return std::string(anotherFront);
    const auto* const step = std::get_if<AutomationAction>(&action);
    const std::string_view problem = step ? problemInFront(*step, before, now) : problemAtPlaces(action, before, now);
    return problem.empty() ? Found(std::move(again)) : Found(std::string(problem));
}

} // namespace quorvell
