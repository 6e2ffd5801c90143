// SPDX-License-Identifier: MIT
// Works a practice screen as the assistant works a real one, without a conversation: the same judging, the same
// questions, the same deciders.
#pragma once

#include "Quorvell/actions/tasks/DecisionThread.h"
#include "Quorvell/actions/work/ScreenWork.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/practice/helper/PracticeActor.h"
#include "Quorvell/session/consent/HeardWords.h"
#include "QuorvellCore/live/prompt/HelpMode.h"

#include <memory>
#include <string>

namespace quorvell {

/// Main thread; it borrows the screen and the scheduler.
class PracticeHelper final : public PracticeActor, private ActionObserver {
public:
    PracticeHelper(Screen& screen, Scheduler& scheduler, TieredDecisionEngine::Parts engine);
    ~PracticeHelper() override;

    ActionRunner& runner() override { return m_work.pipeline(); }
    void userSaid(const std::string& words) override;
    void settle(PracticeRun::ResultReport report) override;
    void decide(const DecisionContext& context, PracticeRun::DecisionReport report) override;
    std::string switchOffQuestion() override;
    void stop() override;

private:
    /// What is tried here is written down nowhere.
    class NoLog final : public EventLog {
    public:
        void record(std::string_view, const Json&) override { }
    };

    void actionEnded(const ProposedAction& action, const ActionResult& result) override;
    void questionEnded(const ProposedAction&, QuestionEnd, const ActionResult&) override { }
    ScreenWork::Ports ports(Screen& screen);

    Scheduler& m_scheduler;
    NoLog m_log;
    ActionExecutionGate m_gate;
    HeardWords m_heard;
    TaskPlan m_plan;
    ScreenWork m_work;
    std::shared_ptr<TieredDecisionEngine> m_engine;
    DecisionThread m_thread;
    StepWish m_asked;
    std::shared_ptr<PracticeHelper*> m_self; ///< What is posted may come when it is gone.
};

} // namespace quorvell
