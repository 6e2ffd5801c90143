// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ActionBrakes.h"

#include <algorithm>

namespace quorvell {

/// A task that is carried out here has brakes of its own for its length; it does not talk to the user on the way.
std::optional<std::string> ActionBrakes::refusal(
    const std::string& action, const AutomationObservation& screen, ProposedAction::Source source) const
{
    std::optional<int> stall;
    if (m_plan)
        stall = m_guard.planStall();
    if (source == ProposedAction::Source::engine)
        stall = 0;
    return m_guard.refusal(action, screen.stateKey(), stall, finishedSteps());
}

void ActionBrakes::record(const std::string& action, const AutomationObservation& before,
    const AutomationObservation& after, ActionLoopGuard::Outcome outcome)
{
    m_guard.record(action, before.stateKey(), after.stateKey(), outcome, finishedSteps());
}

bool ActionBrakes::planChanged(const TaskPlan& plan)
{
    if (plan.goal.empty()) {
        m_plan.reset();
        return false;
    }
    const int finished = finishedSteps();
    const bool isSame = m_plan && m_plan->goal == plan.goal;
    const bool hasLearned = isSame && plan.facts != m_plan->facts;
    m_plan = plan;
    if (isSame && (hasLearned || finishedSteps() > finished))
        m_guard.progressed();
    return !isSame;
}

int ActionBrakes::finishedSteps() const
{
    return m_plan ? static_cast<int>(std::ranges::count(m_plan->steps, true, &TaskPlan::Step::done)) : 0;
}

} // namespace quorvell
