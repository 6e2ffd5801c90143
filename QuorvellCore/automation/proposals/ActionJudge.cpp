// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/proposals/ActionJudge.h"

#include "QuorvellCore/automation/proposals/AddressRisk.h"
#include "QuorvellCore/automation/proposals/LookRisk.h"
#include "QuorvellCore/automation/proposals/MeantOption.h"
#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/safety/KeyModifiers.h"
#include "QuorvellCore/safety/RecordedKey.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/desktop/DesktopDangers.h"
#include "QuorvellCore/safety/places/FileKind.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <charconv>

namespace quorvell {

using namespace screen_action;

namespace {

using Problem = std::optional<std::string>;
using Tool = AutomationAction::Tool;

template <typename... Kinds> struct ByKind : Kinds... {
    using Kinds::operator()...;
};
template <typename... Kinds> ByKind(Kinds...) -> ByKind<Kinds...>;

const AutomationCandidate* candidateOf(const ScreenLook& look, std::string_view id)
{
    const auto& candidates = look.observation.candidates;
    const auto isIt = [&](const AutomationCandidate& candidate) { return candidate.id == id; };
    const auto found = std::find_if(candidates.begin(), candidates.end(), isIt);
    return found == candidates.end() || std::any_of(found + 1, candidates.end(), isIt) ? nullptr : &*found;
}

Problem targetProblem(const ScreenLook& look, std::string_view id, bool isLatest)
{
    const AutomationCandidate* candidate = candidateOf(look, id);
    if (!candidate)
        return isLatest ? "No element with that id. Call look_at_screen again, then use a new id."
                        : "No element with that id any more. Call look_at_screen again, then use a new id.";
    // A secret's element is judged whether it is enabled or not.
    if (!candidate->enabled && !candidate->secure)
        return "That element is disabled. Do what enables it first, or look at the screen for another way.";
    return std::nullopt;
}

bool hasControlCharacters(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char letter) {
        const auto code = static_cast<unsigned char>(letter);
        return (code < 0x20 && letter != '\n' && letter != '\r' && letter != '\t') || code == 0x7F;
    });
}

Problem typingProblem(const ScreenLook& look, const std::string& id, const std::string& text, bool isLatest)
{
    if (Problem problem = targetProblem(look, id, isLatest))
        return problem;
    const AutomationCandidate* candidate = candidateOf(look, id);
    // The rest is asked of the one place that knows what can be typed: the field is not what this is about.
    const AutomationCandidate box{.id = "box", .role = "AXTextField", .enabled = true};
    const AutomationAction typed{.tool = Tool::typeText, .target = "box", .text = text};
    if (!text.empty() && !typed.isValid(AutomationObservation{.candidates = {box}}))
        return "That is too much to type at once. Give a few paragraphs per call, one call after another.";
    if (hasControlCharacters(text))
        return "Control characters can't be typed. Use press_key for keys.";
    if (!candidate || (!ElementRole::isTextEntry(candidate->role) && !candidate->secure))
        return "That element is no field to type into.";
    return std::nullopt;
}

Problem spotProblem(const ScreenLook& look, std::initializer_list<double> places)
{
    const auto isPlace = [](double place) { return place >= 0 && place <= 1000; }; // false for what is no number
    if (!std::all_of(places.begin(), places.end(), isPlace))
        return "x and y are required, 0 to 1000.";
    if (!look.image)
        return "Request look_at_screen with include_image true before using coordinates.";
    return std::nullopt;
}

Problem optionProblem(const ChooseOption& choice, const ScreenLook& look, bool isLatest)
{
    if (Problem problem = targetProblem(look, choice.target, isLatest))
        return problem;
    if (trimmed(choice.option).empty())
        return "option is required: the entry's name as it is written.";
    const ScreenElement* element = look.element(choice.target);
    if (!element || element->options.empty())
        return std::nullopt;
    const std::size_t meant = meantOptions(element->options, choice.option).size();
    if (meant == 0)
        return "There is no such entry. Look at the screen and use an entry's name as it is written.";
    return meant == 1 ? Problem() : "Several entries are called like that. Use the whole name of one.";
}

Problem quickProblem(const QuickAction& action)
{
    if (action.kind == QuickAction::Kind::doNotDisturb)
        return action.value == "on" || action.value == "off" ? Problem() : "value is \"on\" or \"off\" for that.";
    if (action.kind != QuickAction::Kind::volume && action.kind != QuickAction::Kind::brightness)
        return std::nullopt;
    int percent = -1;
    const char* end = action.value.data() + action.value.size();
    const auto read = std::from_chars(action.value.data(), end, percent);
    const bool isPercent = read.ec == std::errc() && read.ptr == end && percent >= 0 && percent <= 100;
    if (isPercent || action.value == "up" || action.value == "down")
        return std::nullopt;
    return "value is \"0\" to \"100\", \"up\" or \"down\" for that.";
}

Problem stepProblem(const AutomationAction& action, const ScreenLook& look, bool isLatest)
{
    const std::string target = action.target.value_or("");
    switch (action.tool) {
    case Tool::click:
        return targetProblem(look, target, isLatest);
    case Tool::typeText:
        if (!action.text || action.text->empty())
            return "text is required.";
        return typingProblem(look, target, *action.text, isLatest);
    case Tool::pressKey:
        return action.isValid(look.observation) ? Problem() : "That isn't a key I know.";
    case Tool::scroll:
        if (action.target) {
            if (Problem problem = targetProblem(look, target, isLatest))
                return problem;
        }
        return action.direction == "up" || action.direction == "down" ? Problem()
                                                                      : "Scrolling goes \"up\" or \"down\".";
    case Tool::chooseMenu:
        return action.isValid(look.observation)
            ? Problem()
            : "path is required: one to five names from the menu bar down to the command.";
    case Tool::openApp:
        return action.isValid(look.observation) ? Problem() : "name is required: an application's name.";
    case Tool::openWebsite:
        return action.isValid(look.observation) ? Problem() : "address is required: one on the web.";
    }
    return "That is no action.";
}

/// With arguments behind it, or a path, it is more than an application's name.
ActionRisk appNameRisk(const std::string& name)
{
    ActionRisk risk = ActionRisk::strictest(SafetyGuard::appRisk(name), DesktopDangers::openRisk(name));
    if (name.find('/') != std::string::npos || fileKind(name) == FileKind::program)
        risk = ActionRisk::strictest(std::move(risk), SafetyGuard::openFileRisk(name, FileMention::byOthers));
    return risk;
}

ActionRisk stepRisk(const AutomationAction& action, const ScreenLook& look)
{
    const LookRisk risk(look);
    const AutomationCandidate* candidate = action.target ? candidateOf(look, *action.target) : nullptr;
    switch (action.tool) {
    case Tool::click:
        return candidate ? risk.ofPressing(*candidate) : ActionRisk::safe();
    case Tool::typeText:
        return candidate ? risk.ofTyping(*candidate, action.text.value_or(""), true) : ActionRisk::safe();
    case Tool::pressKey:
        return risk.ofKey(action.key.value_or(""));
    case Tool::scroll:
        return ActionRisk::safe();
    case Tool::chooseMenu:
        return risk.ofMenu(action.path.value_or(std::vector<std::string>()));
    case Tool::openApp:
        return appNameRisk(action.name.value_or(""));
    case Tool::openWebsite:
        return addressRisk(action.address.value_or(""));
    }
    return ActionRisk::never("That is no action.");
}

AutomationAction judgedStep(AutomationAction action)
{
    if (action.tool == Tool::pressKey && action.key)
        action.key = recordedKey(*action.key).value_or(*action.key);
    if (action.tool == Tool::openWebsite && action.address) {
        if (const auto judged = JudgedAddress::read(*action.address))
            action.address = judged->text;
    }
    return action;
}

ChooseOption judgedChoice(ChooseOption choice, const ScreenLook& look)
{
    const ScreenElement* element = look.element(choice.target);
    const auto meant = element ? meantOptions(element->options, choice.option) : std::vector<std::string>();
    if (meant.size() == 1)
        choice.option = meant.front();
    return choice;
}

} // namespace

ScreenAction ActionJudge::judgedAction(const ScreenAction& action, const ScreenLook& look)
{
    return std::visit(ByKind{
                          [](const AutomationAction& step) -> ScreenAction { return judgedStep(step); },
                          [&](const ChooseOption& choice) -> ScreenAction { return judgedChoice(choice, look); },
                          [](const auto& other) -> ScreenAction { return other; },
                      },
        action);
}

std::optional<std::string> ActionJudge::problem(const ProposedAction& proposed, const ScreenLook& look)
{
    const bool isLatest = proposed.revision == look.observation.revision;
    return std::visit(
        ByKind{
            [&](const AutomationAction& step) { return stepProblem(step, look, isLatest); },
            [&](const ReplaceText& typing) { return typingProblem(look, typing.target, typing.text, isLatest); },
            [&](const ClickSpot& spot) {
                return spotProblem(look, {spot.x, spot.y});
            },
            [&](const Drag& drag) {
                return spotProblem(look, {drag.x, drag.y, drag.toX, drag.toY});
            },
            [&](const ChooseOption& choice) { return optionProblem(choice, look, isLatest); },
            [](const BrowserControl&) { return Problem(); },
            [](const QuickAction& action) { return quickProblem(action); },
        },
        judgedAction(proposed.action, look));
}

ActionRisk ActionJudge::judge(const ProposedAction& proposed, const ScreenLook& look)
{
    if (const auto why = problem(proposed, look))
        return ActionRisk::never(*why);
    const LookRisk risk(look);
    const auto candidate = [&](const std::string& id) -> const AutomationCandidate& { return *candidateOf(look, id); };
    return std::visit(
        ByKind{
            [&](const AutomationAction& step) { return stepRisk(step, look); },
            [&](const ReplaceText& typing) { return risk.ofTyping(candidate(typing.target), typing.text, false); },
            [&](const ClickSpot& spot) { return risk.ofPressingAt(spot.x, spot.y); },
            [&](const Drag& drag) { return risk.ofDragging(drag); },
            [&](const ChooseOption& choice) { return risk.ofChoosing(candidate(choice.target), choice.option); },
            [](const BrowserControl& control) {
                const bool isClosing = control.kind == BrowserControl::Kind::closeTab;
                return isClosing ? SafetyGuard::keyRisk("w", KeyModifiers::command, false) : ActionRisk::safe();
            },
            [](const QuickAction& action) {
                const bool isLocking = action.kind == QuickAction::Kind::lockScreen;
                return isLocking ? SafetyGuard::keyRisk("q", KeyModifiers::command | KeyModifiers::control, false)
                                 : ActionRisk::safe();
            },
        },
        judgedAction(proposed.action, look));
}

} // namespace quorvell
