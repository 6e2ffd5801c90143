// SPDX-License-Identifier: MIT
// The loop guard of the task that is carried out, with the plan that it goes by.
#pragma once

#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/automation/loop/ActionLoopGuard.h"
#include "QuorvellCore/automation/proposals/ProposedAction.h"
#include "QuorvellCore/automation/screen/AutomationObservation.h"

#include <optional>
#include <string>

namespace quorvell {

/// A value. Actions are texts as screenActionText makes them.
class ActionBrakes {
public:
    /// What the model is told in place of the action; nothing where it may run.
    std::optional<std::string> refusal(
        const std::string& action, const AutomationObservation& screen, ProposedAction::Source source) const;
    void record(const std::string& action, const AutomationObservation& before, const AutomationObservation& after,
        ActionLoopGuard::Outcome outcome);

    void userSaid() { m_guard.heardThem(); }
    /// True where it is the plan of another task.
    bool planChanged(const TaskPlan& plan);
    void taskChanged() { m_guard = {}; } ///< The counts begin anew.
    void forget() { *this = {}; } ///< The conversation is over.

private:
    int finishedSteps() const;

    ActionLoopGuard m_guard;
    std::optional<TaskPlan> m_plan; ///< While there is one.
};

} // namespace quorvell
