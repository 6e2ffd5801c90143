// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/macros/MacroStep.h"

#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/automation/engine/context/StepRisk.h"
#include "QuorvellCore/automation/engine/context/StepTaken.h"
#include "QuorvellCore/automation/engine/context/StepText.h"
#include "QuorvellCore/automation/engine/macros/KeepableText.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/TextMatch.h"
#include "QuorvellCore/text/web/SiteMatch.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

std::string siteOf(const AutomationObservation& observation)
{
    return observation.page ? SiteMatch::host(*observation.page).value_or("") : "";
}

/// Null unless there is one of the name and it can be acted on.
const AutomationCandidate* theOne(
    const AutomationObservation& observation, std::string_view role, std::string_view label)
{
    const AutomationCandidate* found = nullptr;
    for (const AutomationCandidate& candidate : observation.candidates) {
        if (candidate.role != role || candidate.label != label)
            continue;
        if (found)
            return nullptr;
        found = &candidate;
    }
    return found ? observation.usableTarget(found->id) : nullptr;
}

bool isWithinBounds(const MacroStep& step)
{
    const auto fits = [](const std::string& text) { return text.size() <= MacroStep::longestText; };
    const auto fitsIfSet = [&](const std::optional<std::string>& text) { return !text || fits(*text); };
    const AutomationAction& action = step.action;
    const auto path = action.path.value_or(std::vector<std::string>{});
    return fits(step.app) && fits(step.site) && fits(step.role) && fits(step.label) && fits(step.expected.value)
        && fitsIfSet(action.text) && fitsIfSet(action.key) && fitsIfSet(action.name) && fitsIfSet(action.address)
        && fitsIfSet(action.direction) && std::all_of(path.begin(), path.end(), fits);
}

/// On a screen with nothing but its own element: whether it is a step at all.
bool isWhole(const MacroStep& step)
{
    AutomationObservation screen;
    AutomationAction action = step.action;
    if (action.target || step.app.empty() || step.role.empty() != step.label.empty())
        return false;
    if (!step.role.empty()) {
        screen.candidates.push_back({.id = "it", .role = step.role, .label = step.label, .enabled = true});
        action.target = "it";
    }
    return action.isValid(screen) && !SafetyGuard::isSensitiveValue(step.label, step.role, "");
}

/// Nobody is there to look, and an empty expectation never holds.
bool tellsThatItWorked(const Postcondition& expected)
{
    return expected.kind == Postcondition::Kind::changed
        || (expected.kind != Postcondition::Kind::userCheck && !expected.value.empty());
}

/// Whatever the case of the letters: how the text is written is compared when the step is taken.
bool isOfGoal(std::string_view text, std::string_view goal)
{
    return GoalWords::names(lowerCased(goal), lowerCased(text)) && KeepableText::isPublic(text);
}

bool isKeepableExpectation(const Postcondition& expected, std::string_view goal)
{
    if (expected.kind == Postcondition::Kind::valueContains)
        return isOfGoal(expected.value, goal);
    if (expected.kind == Postcondition::Kind::site)
        return KeepableText::isPlace(expected.value);
    return KeepableText::isPublic(expected.value);
}

/// What belongs to another tool has no business there either.
bool holdsOnlyItsOwn(const AutomationAction& action)
{
    using Tool = AutomationAction::Tool;
    return (!action.text || action.tool == Tool::typeText) && (!action.key || action.tool == Tool::pressKey)
        && (!action.path || action.tool == Tool::chooseMenu) && (!action.name || action.tool == Tool::openApp)
        && (!action.address || action.tool == Tool::openWebsite) && (!action.direction || action.tool == Tool::scroll);
}

} // namespace

std::optional<MacroStep> MacroStep::learnt(const AutomationAction& action, const Postcondition& expected,
    const AutomationObservation& before, std::string_view goal)
{
    MacroStep step{.app = TextMatch::normalized(before.app), .site = siteOf(before), .action = action};
    step.expected = expected;
    step.action.target.reset();
    if (action.target) {
        const AutomationCandidate* element = before.usableTarget(*action.target);
        if (!element || element != theOne(before, element->role, element->label))
            return std::nullopt;
        step.role = element->role;
        step.label = element->label;
    }
    return step.isKeepable(goal) ? std::optional(std::move(step)) : std::nullopt;
}

bool MacroStep::isKeepable(std::string_view goal) const
{
    if (!isWithinBounds(*this) || !isWhole(*this) || !holdsOnlyItsOwn(action) || !tellsThatItWorked(expected))
        return false;
    const auto path = action.path.value_or(std::vector<std::string>{});
    return KeepableText::isPublic(label) && isKeepableExpectation(expected, goal)
        && (!action.text || isOfGoal(*action.text, goal)) && (!action.address || KeepableText::isPlace(*action.address))
        && (!action.name || KeepableText::isPublic(*action.name))
        && std::all_of(path.begin(), path.end(), KeepableText::isPublic);
}

std::optional<AutomationDecision> MacroStep::decide(const DecisionContext& context) const
{
    const AutomationObservation& screen = context.observation;
    if (TextMatch::normalized(screen.app) != app || siteOf(screen) != site || !isKeepable(context.goal)
        || (action.text && !GoalWords::names(context.goal, *action.text)))
        return std::nullopt;
    AutomationAction step = action;
    if (!role.empty()) {
        const AutomationCandidate* element = theOne(screen, role, label);
        if (!element)
            return std::nullopt;
        step.target = element->id;
    }
    if (!step.isValid(screen) || stepRisk(step, screen).kind == ActionRisk::Case::never)
        return std::nullopt;
    const std::string message = stepAnnouncement(step, screen);
    return AutomationDecision{AutomationDecision::Kind::action, message, std::move(step), expected};
}

AutomationHistory MacroStep::taken(bool verified) const
{
    return stepTaken(action, label, verified);
}

} // namespace quorvell
