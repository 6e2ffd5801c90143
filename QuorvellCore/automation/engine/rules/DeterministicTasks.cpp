// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/rules/DeterministicTasks.h"

#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/automation/engine/context/StepRisk.h"
#include "QuorvellCore/automation/engine/context/StepTaken.h"
#include "QuorvellCore/automation/engine/context/StepText.h"
#include "QuorvellCore/automation/engine/rules/PlainGoal.h"
#include "QuorvellCore/safety/SpokenLabel.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// What is pressed to do what its label says. Of other elements a press may select, open or do nothing.
constexpr std::string_view controlRoles[] = {
    "AXButton", "AXLink", "AXMenuItem", "AXCheckBox", "AXRadioButton", "AXPopUpButton", "AXMenuButton", "AXTab"};

bool isControl(const AutomationCandidate& candidate)
{
    return std::find(std::begin(controlRoles), std::end(controlRoles), candidate.role) != std::end(controlRoles);
}

bool isCalled(const std::vector<std::string>& labels, const std::string& label)
{
    return std::find(labels.begin(), labels.end(), GoalWords::of(label)) != labels.end();
}

/// Elements of any kind count: where a text has the same name, it is not certain what is meant.
const AutomationCandidate* theControl(const PlainGoal& goal, const AutomationObservation& screen)
{
    const AutomationCandidate* found = nullptr;
    for (const AutomationCandidate& candidate : screen.candidates) {
        if (!isCalled(goal.labels, candidate.label) || (!goal.role.empty() && candidate.role != goal.role))
            continue;
        if (found)
            return nullptr;
        found = &candidate;
    }
    return found && isControl(*found) ? found : nullptr;
}

bool isOnScreen(const std::string& name, const AutomationObservation& screen)
{
    const std::string words = GoalWords::of(name);
    return std::any_of(screen.candidates.begin(), screen.candidates.end(),
        [&](const AutomationCandidate& candidate) { return GoalWords::of(candidate.label) == words; });
}

struct PlainStep {
    AutomationAction action{};
    Postcondition expected{};
};

std::optional<PlainStep> stepFor(const PlainGoal& goal, const AutomationObservation& screen)
{
    using Tool = AutomationAction::Tool;
    const Postcondition changed{Postcondition::Kind::changed, ""};
    switch (goal.kind) {
    case PlainGoal::Kind::scroll:
        return PlainStep{{.tool = Tool::scroll, .direction = goal.name}, changed};
    case PlainGoal::Kind::site:
        return PlainStep{{.tool = Tool::openWebsite, .address = goal.name}, {Postcondition::Kind::site, goal.name}};
    case PlainGoal::Kind::app:
        if (!goal.isCertain && isOnScreen(goal.name, screen))
            return std::nullopt;
        return PlainStep{{.tool = Tool::openApp, .name = goal.name}, {Postcondition::Kind::app, goal.name}};
    case PlainGoal::Kind::back:
    case PlainGoal::Kind::press:
    case PlainGoal::Kind::label: {
        const AutomationCandidate* control = theControl(goal, screen);
        if (!control)
            return std::nullopt;
        return PlainStep{{.tool = Tool::click, .target = control->id}, changed};
    }
    }
    return std::nullopt;
}

/// Whether that one step was taken which the goal asks for, and was seen to work.
bool isDone(const PlainGoal& goal, const AutomationHistory& step)
{
    using Tool = AutomationAction::Tool;
    const auto was = [&](Tool tool) { return step.verified && step.operation == storedText(tool); };
    switch (goal.kind) {
    case PlainGoal::Kind::scroll:
        return was(Tool::scroll) && step.target == goal.name;
    case PlainGoal::Kind::site:
        return was(Tool::openWebsite) && step.target == goal.name;
    case PlainGoal::Kind::app:
        return was(Tool::openApp) && step.target == goal.name;
    case PlainGoal::Kind::back:
    case PlainGoal::Kind::press:
        return was(Tool::click) && isCalled(goal.labels, step.target);
    case PlainGoal::Kind::label:
        return false; // "sign in" is more than the press of what is called so: the planner looks how far it came.
    }
    return false;
}

std::string reportOf(const PlainGoal& goal, const AutomationHistory& step)
{
    const std::string shown = SpokenLabel::quoted(step.target);
    switch (goal.kind) {
    case PlainGoal::Kind::scroll:
        return "I scrolled " + goal.name + ".";
    case PlainGoal::Kind::back:
        return "I went back.";
    case PlainGoal::Kind::site:
    case PlainGoal::Kind::app:
        return shown + " is open.";
    case PlainGoal::Kind::press:
    case PlainGoal::Kind::label:
        return "I pressed " + shown + ".";
    }
    return shown;
}

/// Where the goal is but a name, only what is harmless is pressed: it may have been meant otherwise.
bool isAllowed(const PlainGoal& goal, const AutomationAction& action, const AutomationObservation& screen)
{
    const ActionRisk risk = stepRisk(action, screen);
    return goal.kind == PlainGoal::Kind::label ? risk.isSafe() : risk.kind != ActionRisk::Case::never;
}

} // namespace

std::optional<AutomationDecision> DeterministicTasks::decide(
    const DecisionContext& context, std::span<const std::string> applications)
{
    if (context.goal.size() > longestGoal || context.history.size() > 1)
        return std::nullopt;
    const auto goal = PlainGoal::read(context.goal, applications);
    if (!goal)
        return std::nullopt;
    if (!context.history.empty()) {
        const AutomationHistory& step = context.history.front();
        if (!isDone(*goal, step))
            return std::nullopt;
        return AutomationDecision{
            AutomationDecision::Kind::finished, reportOf(*goal, step), std::nullopt, std::nullopt};
    }
    auto step = stepFor(*goal, context.observation);
    if (!step || !step->action.isValid(context.observation) || !isAllowed(*goal, step->action, context.observation))
        return std::nullopt;
    const std::string message = stepAnnouncement(step->action, context.observation);
    return AutomationDecision{
        AutomationDecision::Kind::action, message, std::move(step->action), std::move(step->expected)};
}

} // namespace quorvell
