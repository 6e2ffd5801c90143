// SPDX-License-Identifier: MIT
// All that acts on one screen for one user, put together: judging, asking, doing, whole tasks, pointing.
#pragma once

#include "Quorvell/actions/pipeline/ActionPipeline.h"
#include "Quorvell/actions/tasks/DecisionThread.h"
#include "Quorvell/actions/tasks/GoalRun.h"
#include "Quorvell/actions/tasks/GuidePointer.h"
#include "Quorvell/actions/tasks/MacroKeeper.h"
#include "Quorvell/actions/tasks/NextStepFollower.h"
#include "Quorvell/actions/tasks/TaskCoordinator.h"
#include "Quorvell/actions/tools/HelperMail.h"
#include "Quorvell/actions/tools/LookTeller.h"
#include "Quorvell/actions/work/ConversationWords.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/SessionObserver.h"
#include "Quorvell/session/tools/ToolRegistry.h"
#include "QuorvellCore/automation/engine/TieredDecisionEngine.h"
#include "QuorvellCore/automation/proposals/ActionJudge.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; what it borrows must outlive it. It is told what the session reports and what the user does.
class ScreenWork final : public ActionWatch, public SessionObserver {
public:
    using Guard = std::function<ActionRisk(const ProposedAction&, const ScreenLook&)>;

    struct Ports {
        Screen& screen;
        Scheduler& scheduler;
        EventLog& log;
        ConsentWords& consent;
        ActionExecutionGate& gate; ///< The session's own.
        std::function<std::string()> freshMark;
        std::function<const TaskPlan&()> plan;
        std::function<void()> endPlan;
        std::function<void(LiveMessageText)> tell; ///< An event of the app, for the model.
        std::function<void(std::string, std::function<bool()>)> showTarget;
        std::function<void()> clearTarget;
        std::function<void(const Bytes&)> show{}; ///< A picture for the model. Absent: it cannot be shown one.
        HelperMail* helper = nullptr;
        Guard guard = ActionJudge::judge; ///< Another one only to see what becomes of it.
    };
    /// Who decides the steps of a whole task.
    struct Deciders {
        TieredDecisionEngine::Parts engine; ///< Macros apart.
        MacroBook macros{};
        std::function<void(const MacroBook&)> storeMacros{}; ///< Absent: they are forgotten with the program.
        StepDeciding* deciding = nullptr; ///< Absent: a thread of its own.
    };

    ScreenWork(Ports ports, Deciders deciders, HelpMode mode);
    ~ScreenWork() override;
    ScreenWork(const ScreenWork&) = delete;
    ScreenWork& operator=(const ScreenWork&) = delete;

    /// Before the first call.
    void registerTools(ToolRegistry& registry);

    ActionPipeline& pipeline() { return m_pipeline; }
    ConversationWords& words() { return m_words; }

    /// The tool and the application of the question that is open, where it is one that only the origin of words raised.
    std::optional<ProvenanceGrants::Grant> switchableQuestion() const;
    /// By the user's own hand: questions of that kind are no longer asked in this conversation. The open one stands.
    void switchOff(const ProvenanceGrants::Grant& grant) { m_words.grants().allow(grant.tool, grant.app); }
    const std::vector<ProvenanceGrants::Grant>& switchedOff() const { return m_words.grants().all(); }

    // What the user does
    void userBargedIn() override;
    void userSaid(const HeardUtterance& heard) override;
    void stopped() override;
    void modeChanged(HelpMode mode) override;
    void planChanged(const TaskPlan& plan) override;
    void ended() override;

    // What the session reports
    using SessionObserver::planChanged;
    using SessionObserver::userSaid;
    void toolAnswered(const LiveFunctionResponse& response) override { m_words.toolAnswered(response); }

private:
    ActionPipeline::Ports pipelinePorts();
    GoalRun::Ports goalPorts();
    NextStepFollower::Ports followerPorts();
    void follow(const LiveFunctionCall& call, const ScreenLook& shown, const ActionResult& result,
        NextStepFollower::Answer answer);
    StepDeciding& deciding() { return m_deciders.deciding ? *m_deciders.deciding : m_thread; }
    TaskCoordinator::Ports coordinatorPorts();
    GuidePointer::Ports pointerPorts();
    StepDecider freshDecider();

    Ports m_ports;
    Deciders m_deciders;
    ConversationWords m_words;
    LookTeller m_teller;
    ActionPipeline m_pipeline;
    MacroKeeper m_macros;
    DecisionThread m_thread;
    TaskCoordinator m_coordinator;
    GuidePointer m_pointer;
    GoalRun m_goals;
    NextStepFollower m_follower;
    std::shared_ptr<ScreenWork*> m_self; ///< A macro may break when it is long gone.
};

} // namespace quorvell
