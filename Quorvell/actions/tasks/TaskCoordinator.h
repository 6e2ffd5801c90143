// SPDX-License-Identifier: MIT
// Keeps count of what is done for the open plan, and lets it be called finished only on evidence.
#pragma once

#include "Quorvell/actions/ActionObserver.h"
#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/automation/evidence/CompletionGate.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

namespace quorvell {

/// Main thread; what it borrows must outlive it. The plan itself is kept by whoever hands calls out, and is up to date
/// when a call comes here.
class TaskCoordinator final : public ActionObserver {
public:
    struct Ports {
        EventLog& log;
        ActionRunner& actions;
        std::function<const TaskPlan&()> plan; ///< Without a goal there is none.
        std::function<void()> endPlan;
        std::function<std::string(const ScreenLook&)> screen; ///< As a model is told of it.
        std::function<void()> taskBegan{}; ///< Whoever brakes actions counts anew.
        std::function<void()> taskEnded{};
    };

    explicit TaskCoordinator(Ports ports);
    TaskCoordinator(const TaskCoordinator&) = delete;
    TaskCoordinator& operator=(const TaskCoordinator&) = delete;

    void startTask(const LiveFunctionCall& call, ToolReply reply);
    void updatePlan(const LiveFunctionCall& call, ToolReply reply);
    void taskFinished(const LiveFunctionCall& call, ToolReply reply);

    const std::string& taskGoal() const { return m_ports.plan().goal; }
    int actionsThisTask() const { return m_actions; }
    int questionsThisTask() const { return m_questions; }

    void actionEnded(const ProposedAction& action, const ActionResult& result) override;
    void questionEnded(const ProposedAction& action, QuestionEnd end, const ActionResult& result) override;

private:
    void note(const ProposedAction& action, const ActionResult& result);
    void looked(const LiveFunctionCall& call, const std::variant<ScreenLook, ScreenProblem>& seen, ToolReply reply);
    void judged(const CompletionGate& gate, const ScreenLook* look, ToolReply reply);

    Ports m_ports;
    int m_actions = 0;
    int m_questions = 0;
    std::optional<LastStep> m_last;
    std::shared_ptr<TaskCoordinator*> m_self; ///< A look may come when it is long gone.
};

} // namespace quorvell
