// SPDX-License-Identifier: MIT
// Any text is no file of known ways, or one that is written and read again unchanged, whose steps can be done where
// they are done. Any text as a goal is left alone by the fixed rules, or gets a step that can be done.
#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/automation/engine/macros/MacroFile.h"
#include "QuorvellCore/automation/engine/rules/DeterministicTasks.h"
#include "fuzzing.h"

namespace {

using namespace quorvell;

AutomationObservation knownScreen()
{
    AutomationObservation screen{.app = "Shop", .page = "https://example.com"};
    for (const char* label : {"Search", "Next", "Back"})
        screen.candidates.push_back({.id = label, .role = "AXButton", .label = label, .enabled = true});
    screen.candidates.push_back({.id = "Find", .role = "AXTextField", .label = "Find", .enabled = true});
    return screen;
}

void goOn(const VerifiedMacro& macro)
{
    const DecisionContext context{macro.goal, knownScreen(), {}, {}};
    const auto decision = macro.decide(context, macro.lastVerified);
    require(!decision || (decision->action && decision->action->isValid(context.observation)));
    require(!decision || macro.verified >= VerifiedMacro::timesToTrust);
    for (const MacroStep& step : macro.steps)
        require(!step.action.text || GoalWords::names(macro.goal, *step.action.text) || !step.decide(context));
}

} // namespace

void quorvell::search(std::string_view text)
{
    static const std::vector<std::string> applications = {"Notes", "Text Editor"};
    const DecisionContext asked{std::string(text), knownScreen(), {}, {}};
    if (const auto decision = DeterministicTasks::decide(asked, applications))
        require(decision->action && decision->action->isValid(asked.observation));
    require(GoalWords::of(GoalWords::of(text)) == GoalWords::of(text));
    const auto file = MacroFile::read(text);
    if (!file)
        return;
    const auto again = MacroFile::read(MacroFile::write(file->book));
    require(again && again->book == file->book && again->problems.empty());
    for (const VerifiedMacro& macro : file->book.entries())
        goOn(macro);
}
