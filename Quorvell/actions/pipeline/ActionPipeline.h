// SPDX-License-Identifier: MIT
// From a proposed action to what came of it: valid, judged, kept from going in circles, one at a time, done, looked at
// again, checked, recorded.
#pragma once

#include "Quorvell/actions/ActionObserver.h"
#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/actions/ledger/ActionLedger.h"
#include "Quorvell/actions/pipeline/PendingAction.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/consent/ConsentWords.h"
#include "QuorvellCore/automation/ActionExecutionGate.h"
#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/automation/loop/ActionLoopGuard.h"
#include "QuorvellCore/live/prompt/HelpMode.h"
#include "QuorvellCore/safety/ActionRisk.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; what it borrows must outlive it, as must whoever is answered. A refusal is answered from inside the
/// call.
///
/// Nothing waits for the user: what needs a yes is answered with its question at once and kept as the one pending
/// action. `confirm` takes it up again as if it were proposed anew, on a fresh look; so nothing that happened since is
/// overlooked.
class ActionPipeline final : public ActionRunner {
public:
    /// What is in front may have changed since an older look: it is looked at once more before a key is pressed.
    static constexpr std::chrono::milliseconds freshFor{2'000};

    struct Ports {
        Screen& screen;
        Scheduler& scheduler;
        ActionExecutionGate& gate; ///< The session's own: the one place that knows whether an action runs.
        ConsentWords& consent;
        EventLog& log;
        /// A sentence for the model, where it can not be done on this screen at all. May be null.
        std::function<std::optional<std::string>(const ProposedAction&, const ScreenLook&)> problem;
        /// The strictest of all that applies. Never null.
        std::function<ActionRisk(const ProposedAction&, const ScreenLook&)> judge;
    };
    using Answer = std::function<void(ActionResult)>;

    ActionPipeline(Ports ports, HelpMode mode);
    ActionPipeline(const ActionPipeline&) = delete;
    ActionPipeline& operator=(const ActionPipeline&) = delete;

    /// `callID` says whose ticket of the gate it runs with; it gets one of its own where that call has none.
    void run(ProposedAction action, Answer answer) override;
    void look(const LookWish& wish, Screen::Answer<ScreenLook> answer) override;
    /// Does what is pending, if the user has said a clear yes to it; nothing where they have not.
    void confirm(std::string callID, std::function<void(std::optional<ActionResult>)> answer);
    /// Takes back what was done last, where that can be.
    void undoLast(std::string callID, Answer answer);

    // What goes on around it

    void userSaid(); ///< Something, in speech or in writing.
    void userBargedIn();
    void stopped(); ///< By the user: nothing goes on.
    void modeChanged(HelpMode mode);
    void conversationEnded();
    /// Their answer to the pending question was no: it need not wait for the model to find out.
    void declined();
    void planChanged(const TaskPlan& plan);
    void taskBegan(); ///< The counts begin anew.
    void taskEnded();
    /// Borrowed; it is told until it is taken out or the pipeline ends.
    void addObserver(ActionObserver& observer) { m_observers.push_back(&observer); }
    void removeObserver(ActionObserver& observer) { std::erase(m_observers, &observer); }

    /// Null before the first look.
    const ScreenLook* latestLook() const { return m_look ? &*m_look : nullptr; }
    const std::optional<PendingAction>& pending() const { return m_pending; }
    const ActionLedger& ledger() const { return m_ledger; }
    HelpMode mode() const { return m_mode; }
    int questionsThisTask() const { return m_questions; }

private:
    struct Run;
    enum class Sight { latest, fresh };

    void start(std::shared_ptr<Run> run, Sight sight);
    void lookFirst(const std::shared_ptr<Run>& run);
    void carryOut(const std::shared_ptr<Run>& run);
    void ask(const std::shared_ptr<Run>& run, const std::string& question);
    void act(const std::shared_ptr<Run>& run);
    void acted(const std::shared_ptr<Run>& run, const ScreenOutcome& outcome);
    void lookedAfter(const std::shared_ptr<Run>& run, const ScreenOutcome& outcome, const ScreenLook* after);
    void record(const Run& run, const ScreenOutcome& outcome, const ActionResult& result);
    void finish(const std::shared_ptr<Run>& run, ActionResult result);
    bool takeRight(Run& run);

    void noteLook(ScreenLook look);
    void cancel();
    void endPending(ActionObserver::QuestionEnd end);

    Ports m_ports;
    std::vector<ActionObserver*> m_observers;
    HelpMode m_mode;
    std::optional<ScreenLook> m_look;
    SessionTime m_lookedAt{};
    std::shared_ptr<Run> m_run; ///< Not answered yet, though it may be cancelled; null while none is.
    std::optional<PendingAction> m_pending;
    TimerHandle m_lapse;
    ActionLoopGuard m_guard;
    std::optional<TaskPlan> m_plan; ///< While there is one.
    int m_questions = 0;
    ActionLedger m_ledger;
    std::shared_ptr<ActionPipeline*> m_self; ///< The screen may answer when the pipeline is long gone.
};

} // namespace quorvell
