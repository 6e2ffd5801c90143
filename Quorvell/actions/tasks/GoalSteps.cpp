// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/GoalSteps.h"

#include "QuorvellCore/automation/engine/context/StepTaken.h"

namespace quorvell {

bool GoalSteps::begin(
    const AutomationDecision& decision, const AutomationObservation& observation, std::string_view goal)
{
    ++m_begun;
    m_step = {};
    m_learnt = std::nullopt;
    if (!decision.action)
        return false;
    m_step = stepTaken(*decision.action, observation, false);
    if (!decision.action->isValid(observation))
        return false;
    const Postcondition anything{Postcondition::Kind::changed, {}};
    m_learnt = MacroStep::learnt(*decision.action, decision.expected.value_or(anything), observation, goal);
    return true;
}

void GoalSteps::note(bool isVerified)
{
    m_step.verified = isVerified;
    m_history.push_back(m_step);
    m_failures = isVerified ? 0 : m_failures + 1;
    if (isVerified && m_learnt)
        m_way.push_back(*m_learnt);
}

std::vector<MacroStep> GoalSteps::way() const
{
    return m_way.size() == m_history.size() ? m_way : std::vector<MacroStep>();
}

} // namespace quorvell
