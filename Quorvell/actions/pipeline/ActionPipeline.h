// SPDX-License-Identifier: MIT
// From a proposed action to what came of it: valid, judged, kept from going in circles, one at a time, done, looked at
// again, checked, recorded.
#pragma once

#include "Quorvell/actions/ActionObserver.h"
#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/actions/pipeline/ActionBrakes.h"
#include "Quorvell/actions/pipeline/ActionLedger.h"
#include "Quorvell/actions/pipeline/OpenQuestion.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/consent/ConsentWords.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "QuorvellCore/automation/ActionExecutionGate.h"
#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/automation/provenance/PromptTally.h"
#include "QuorvellCore/automation/provenance/ProvenanceRisk.h"
#include "QuorvellCore/live/prompt/HelpMode.h"

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
class ActionPipeline final : public ActionRunner, public ActionWatch {
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
        /// The form in which an action is judged, and the only one in which it is carried out. May be null.
        std::function<ScreenAction(const ScreenAction&, const ScreenLook&)> judgedForm;
        /// Where the words of an action came from. May be null: nobody knows.
        std::function<WordOrigins(const ScreenAction&, const ScreenLook&)> originsOf;
        /// The strictest of all that applies. Never null.
        std::function<ActionVerdict(const ProposedAction&, const ScreenLook&)> judge;
    };
    using Answer = std::function<void(ActionResult)>;
    using ConfirmAnswer = std::function<void(std::optional<ActionResult>)>;

    ActionPipeline(Ports ports, HelpMode mode);
    ActionPipeline(const ActionPipeline&) = delete;
    ActionPipeline& operator=(const ActionPipeline&) = delete;

    /// `callID` says whose ticket of the gate it runs with; it gets one of its own where that call has none.
    void run(ProposedAction action, Answer answer) override;
    void look(const LookWish& wish, Screen::Answer<ScreenLook> answer) override;
    /// Does what is pending, if the user has said a clear yes to it; nothing where they have not.
    void confirm(std::string callID, ConfirmAnswer answer);
    /// Takes back what was done last, where that can be.
    void undoLast(std::string callID, Answer answer);

    // What goes on around it

    void userSaid(const HeardUtterance& heard) override;
    void userBargedIn() override;
    void stopped() override;
    void modeChanged(HelpMode mode) override;
    void planChanged(const TaskPlan& plan) override;
    void ended() override;
    void taskBegan(); ///< The counts begin anew.
    void taskEnded();
    /// Borrowed; it is told until it is taken out or the pipeline ends.
    void addObserver(ActionObserver& observer) { m_observers.push_back(&observer); }
    void removeObserver(ActionObserver& observer) { std::erase(m_observers, &observer); }

    /// Null before the first look.
    const ScreenLook* latestLook() const { return m_look.get(); }
    /// What waits for a yes is off: there is reason not to do it any more.
    void withdrawQuestion();
    const std::optional<PendingAction>& pending() const { return m_question.pending(); }
    const ActionLedger& ledger() const { return m_ledger; }
    HelpMode mode() const { return m_mode; }
    const PromptTally& questionsThisTask() const { return m_questions; }

private:
    struct Run;
    using RunPointer = std::shared_ptr<Run>;

    void start(const RunPointer& run);
    bool takeRight(Run& run);
    bool needsFreshLook(const Run& run) const;
    void lookFirst(const RunPointer& run);
    void carryOut(const RunPointer& run);
    void ask(const RunPointer& run, const ActionVerdict& verdict);
    void answerConfirm(std::string callID, PendingConsent::Answer settled, const ConfirmAnswer& answer);
    void act(const RunPointer& run);
    void acted(const RunPointer& run, const ScreenOutcome& outcome);
    void conclude(const RunPointer& run, const ScreenOutcome& outcome, const ScreenProblem* blind);
    void record(const Run& run, const ScreenOutcome& outcome, const ActionResult& result);
    void finish(const RunPointer& run, ActionResult result);

    void noteLook(ScreenLook look);
    void cancel();
    void tellQuestionEnded(const ProposedAction& action, ActionObserver::QuestionEnd end, const ActionResult& result);

    Ports m_ports;
    std::vector<ActionObserver*> m_observers;
    HelpMode m_mode;
    std::shared_ptr<const ScreenLook> m_look; ///< The latest; shared with what was chosen on it.
    SessionTime m_lookedAt{};
    RunPointer m_run; ///< Not answered yet, though it may be cancelled; null while there is none.
    OpenQuestion m_question;
    PromptTally m_questions; ///< Of this task.
    ActionBrakes m_brakes;
    ActionLedger m_ledger;
    std::shared_ptr<ActionPipeline*> m_self; ///< The screen may answer when the pipeline is long gone.
};

} // namespace quorvell
