// SPDX-License-Identifier: MIT
// Carries out a whole goal step by step: looks, has the next step decided, has it run by the one way to the screen, and
// looks at what came of it.
//
// It ends with what a decider cannot settle: a question, a refusal, a step that keeps failing. Where a step needs the
// user's yes it answers its call, lets go of the screen and waits; it goes on by itself once the step was carried out.
#pragma once

#include "Quorvell/actions/ActionObserver.h"
#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/actions/tasks/GoalOutcome.h"
#include "Quorvell/actions/tasks/StepDeciding.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/ports/LiveMessageText.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "QuorvellCore/automation/ActionExecutionGate.h"
#include "QuorvellCore/automation/engine/macros/MacroStep.h"
#include "QuorvellCore/live/prompt/HelpMode.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; what it borrows must outlive it. One goal at a time.
class GoalRun final : public ActionObserver {
public:
    static constexpr std::chrono::minutes longestTime{5}; ///< Of work; waiting for a yes does not count.
    static constexpr std::chrono::seconds progressPeriod{20};
    static constexpr std::size_t longestQuestion = 300; ///< User-perceived characters of what a decider asks.

    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        ActionRunner& actions;
        ActionExecutionGate& gate;
        StepDeciding& deciding;
        std::function<StepDecider()> decider; ///< A fresh one for each goal.
        std::function<HelpMode()> mode;
        std::function<void(LiveMessageText)> tell; ///< An event of the app, for the model.
        GoalOutcome::Telling telling;
        /// The way to a goal, each step of it verified. Absent: nothing is learnt.
        std::function<void(const std::string& goal, std::vector<MacroStep> steps)> learn{};
        /// Takes back what was done last, for the goal that says so. Absent: nothing can be.
        std::function<void(std::string callID, std::function<void(ActionResult)>)> undoLast{};
    };

    explicit GoalRun(Ports ports);
    ~GoalRun() override;
    GoalRun(const GoalRun&) = delete;
    GoalRun& operator=(const GoalRun&) = delete;

    /// do_task. `reply` is answered exactly once: at the end, or with the question that has to be answered first.
    void start(const LiveFunctionCall& call, ToolReply reply);
    /// The call that carried out the step with the user's yes: true where the task goes on after it and answers when it
    /// ends, or asks again.
    bool carryOn(ToolReply& reply);
    /// The user stopped it, spoke over it or changed the mode, or the conversation is over. At once: what is being
    /// decided is abandoned; an action that runs is told to stop and waited for, as only it knows how far it got.
    void stop();

    bool isRunning() const; ///< Not while it waits for a yes.
    bool isWaiting() const;
    std::string goal() const; ///< Empty where there is none.

    void actionEnded(const ProposedAction& action, const ActionResult& result) override;
    void questionEnded(const ProposedAction& action, QuestionEnd end, const ActionResult& result) override;

private:
    struct Run;

    void look(const LookWish& wish);
    void looked(std::variant<ScreenLook, ScreenProblem> seen);
    void decide();
    void decided(const StepAnswer& answer);
    void act(const AutomationDecision& decision);
    void notPossible();
    void acted(const ActionResult& result);
    void refused(const ActionResult& result);
    void needUser(std::string question);
    void waitForYes(const ActionResult& result);
    void confirmed();
    void dropped();
    void finished(const AutomationDecision& decision);
    void wantImage();
    bool mustEnd();
    void tellProgress();

    void timeIsUp();
    void end(GoalOutcome::Kind kind, std::string reason);
    void end(GoalOutcome outcome);
    GoalOutcome outcome(GoalOutcome::Kind kind, std::string reason) const;
    void later(void (GoalRun::*what)());

    Ports m_ports;
    std::shared_ptr<Run> m_run; ///< Held by nobody else for longer than a call; late answers find it gone.
};

} // namespace quorvell
