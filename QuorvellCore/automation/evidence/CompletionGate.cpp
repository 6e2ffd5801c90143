// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/evidence/CompletionGate.h"

#include "QuorvellCore/automation/evidence/ShownWords.h"

namespace quorvell {

namespace {

std::string openSteps(const TaskPlan& plan)
{
    std::string text = "These steps are still open:";
    for (std::size_t index = 0; index < plan.steps.size(); ++index)
        if (!plan.steps[index].done)
            text += "\n" + std::to_string(index + 1) + ". " + plan.steps[index].text;
    return text
        + "\nDo them, or change the plan with update_plan if they are no longer needed. If it can't be finished, tell "
          "them what is done, what isn't and why.";
}

/// That anything changed may be the wrong thing; only the user can tell in the other case.
bool proves(const LastStep& step)
{
    return step.end == LastStep::End::worked && step.expected && *step.expected != Postcondition::Kind::changed
        && *step.expected != Postcondition::Kind::userCheck;
}

std::string notShown(const ShownWords& shown, std::string_view claim)
{
    std::string text = "The screen doesn't show it: \"" + std::string(claim) + "\".";
    if (shown.saysAbsence)
        text += " No screen shows that something is not there: say in done_when what will be seen instead.";
    else if (!shown.missing.empty()) {
        text += " Not found there:";
        for (const std::string& word : shown.missing)
            text += " " + word + (&word == &shown.missing.back() ? "." : ",");
    }
    return text
        + " Look at the screen. If it is finished, put what is really seen into done_when with update_plan and call "
          "task_finished again; if not, go on, or tell them what is missing. Don't tell them it's done.";
}

} // namespace

CompletionGate CompletionGate::judge(const TaskPlan& plan, std::string_view evidence,
    const std::optional<LastStep>& last, const AutomationObservation* look)
{
    if (plan.goal.empty())
        return {Verdict::noPlan, "There is no open plan. Begin one with start_task."};
    if (!plan.isFinished())
        return {Verdict::openSteps, openSteps(plan)};
    if (last && last->end == LastStep::End::waits)
        return {Verdict::waitsForYes, "An action of this task still waits for their yes, so it isn't finished."};
    if (last && proves(*last))
        return {Verdict::finished, {}};
    const std::string_view claim = plan.doneWhen.empty() ? evidence : plan.doneWhen;
    if (!look)
        return {Verdict::needsLook, "Nothing that was done last shows that it's finished."};
    const ShownWords shown = ShownWords::of(claim, *look);
    return shown.isShown ? CompletionGate{Verdict::finished, {}}
                         : CompletionGate{Verdict::notShown, notShown(shown, claim)};
}

} // namespace quorvell
