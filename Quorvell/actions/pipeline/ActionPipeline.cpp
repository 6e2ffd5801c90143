// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ActionPipeline.h"

#include "Quorvell/actions/pipeline/FoundAgain.h"
#include "Quorvell/actions/pipeline/ScreenActionText.h"
#include "QuorvellCore/safety/SpokenWords.h"
#include "QuorvellCore/text/CodeWord.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ActionResult::Kind;
using QuestionEnd = ActionObserver::QuestionEnd;

constexpr const char* busyText =
    "An action is still running. Wait for its result and fresh screen before choosing the next step.";
constexpr const char* guideText =
    "Nothing was done: in Guide mode they act, and you show where. Use point_at with one instruction. Only they change "
    "the mode, with the switch or by saying so.";
constexpr const char* vanishedText = "No element with that id any more. Call look_at_screen again, then use a new id.";
constexpr const char* pictureText = "Request look_at_screen with include_image true before using coordinates.";
constexpr const char* askText =
    "Nothing was done yet. Ask the question word for word, as the last thing that you say, and wait. After a clear yes "
    "call confirm_action, once; on anything else leave it.";
constexpr const char* otherQuestionText =
    "Nothing was done: a question in the same words waits for its answer already, and belongs to something else. Let "
    "them answer that first.";

bool isPlace(const ScreenAction& action)
{
    return std::holds_alternative<screen_action::ClickSpot>(action)
        || std::holds_alternative<screen_action::Drag>(action);
}

/// What they were shown when they stopped it.
ActionResult stoppedAt(ScreenOutcome::Kind reached)
{
    switch (reached) {
    case ScreenOutcome::Kind::done:
        return {.kind = Kind::stopped,
            .words = "They stopped you, but the action was done already when that came. What it led to was not looked "
                     "at. Tell them so."};
    case ScreenOutcome::Kind::failed:
        return {.kind = Kind::stopped, .words = "They stopped you. Nothing was done."};
    case ScreenOutcome::Kind::stopped:
        return {.kind = Kind::stopped,
            .words = "They stopped you on the way, so it may be done in part. Do nothing more until they say so."};
    case ScreenOutcome::Kind::unknown:
        return {.kind = Kind::stopped,
            .words = "They stopped you, and whether it was done is not known. Tell them just that."};
    }
    return {.kind = Kind::stopped};
}

ActionResult notDone(const ScreenOutcome& outcome)
{
    if (outcome.kind == ScreenOutcome::Kind::unknown)
        return {.kind = Kind::unknown,
            .words = (outcome.problem.empty() ? "The application did not answer." : outcome.problem)
                + " It may be done or not: look before you do it again, and don't tell them that it is done."};
    return {.kind = Kind::failed,
        .words = outcome.problem.empty() ? "It could not be done, and nothing was." : outcome.problem};
}

/// Of an action that was handed to the application.
ActionResult checked(const std::optional<Postcondition>& expected, const AutomationObservation& before,
    const AutomationObservation& after)
{
    if (!expected) {
        const bool hasChanged = Postcondition{Postcondition::Kind::changed, {}}.verified(before, after);
        return {.isVerified = hasChanged, .words = hasChanged ? "Done." : "Done, but nothing on the screen changed."};
    }
    if (expected->kind == Postcondition::Kind::userCheck)
        return {.words = "Done. Whether it worked only they can tell: ask them."};
    if (expected->verified(before, after))
        return {.isVerified = true, .words = "Done, and what was expected of it shows."};
    return {.kind = Kind::failed,
        .words = "It was done, but what was expected of it does not show. Look at what the screen says before you try "
                 "anything else."};
}

} // namespace

/// One action on its way.
struct ActionPipeline::Run {
    ProposedAction proposed; ///< As it came.
    ProposedAction action; ///< For the look that it is judged on.
    std::string callID;
    Answer answer;
    PendingAction::Purpose purpose = PendingAction::Purpose::forward;
    std::optional<std::string> agreed{}; ///< The question that the user said yes to.
    std::shared_ptr<const ScreenLook> chosenOn{};
    std::optional<ActionExecutionGate::Ticket> ticket{};
    bool isTicketOurs = false;
    std::shared_ptr<const ScreenLook> before{};
    std::string text{};

    bool isCancelled() const { return ticket && ticket->cancellation->isCancelled(); }
};

ActionPipeline::ActionPipeline(Ports ports, HelpMode mode)
    : m_ports(std::move(ports))
    , m_mode(mode)
    , m_self(std::make_shared<ActionPipeline*>(this))
{
}

// ---- Ways in

void ActionPipeline::run(ProposedAction action, Answer answer)
{
    auto run = std::make_shared<Run>(Run{action, action, action.callID, nullptr});
    run->chosenOn = m_look;
    run->answer = [this, action, answer = std::move(answer)](ActionResult result) {
        for (ActionObserver* const observer : std::vector(m_observers))
            observer->actionEnded(action, result);
        answer(std::move(result));
    };
    const bool isForThisLook = m_look && action.revision == m_look->observation.revision;
    if (targetOf(action.action) && !isForThisLook)
        return finish(run, {.kind = Kind::failed, .words = vanishedText});
    if (isPlace(action.action) && !isForThisLook)
        return finish(run, {.kind = Kind::failed, .words = pictureText});
    start(run);
}

void ActionPipeline::confirm(std::string callID, ConfirmAnswer answer)
{
    if (m_run)
        return answer(ActionResult{.kind = Kind::refused, .words = busyText});
    if (m_pending && m_ports.scheduler.now() - m_pending->askedAt >= PendingAction::longestWait)
        endPending(QuestionEnd::dropped);
    if (!m_pending)
        return answer(std::nullopt);
    m_ports.consent.settleWhenHeard(m_pending->question,
        [self = std::weak_ptr(m_self), callID = std::move(callID), question = m_pending->question,
            answer = std::move(answer)](PendingConsent::Answer settled) mutable {
            const auto pipeline = self.lock();
            if (!pipeline)
                return;
            const auto& pending = (*pipeline)->m_pending;
            if (!pending || pending->question != question) // Whatever ended it meanwhile.
                return answer(std::nullopt);
            (*pipeline)->answerConfirm(std::move(callID), settled, answer);
        });
}

void ActionPipeline::answerConfirm(std::string callID, PendingConsent::Answer settled, const ConfirmAnswer& answer)
{
    using Yes = PendingConsent::Answer;
    if (settled == Yes::no)
        dropPending(QuestionEnd::refused);
    if (settled == Yes::borrowed)
        openQuestion();
    if (settled != Yes::yes)
        return answer(std::nullopt);

    m_lapse.cancel();
    PendingAction agreed = *std::exchange(m_pending, std::nullopt); // A yes is good for one thing, once.
    auto run = std::make_shared<Run>(Run{agreed.action, agreed.action, std::move(callID), nullptr});
    run->purpose = agreed.purpose;
    run->agreed = std::move(agreed.question);
    run->chosenOn = std::move(agreed.look);
    run->answer = [this, action = agreed.action, answer](ActionResult result) {
        tellQuestionEnded(action, QuestionEnd::carriedOut, result);
        answer(std::move(result));
    };
    start(run);
}

void ActionPipeline::undoLast(std::string callID, Answer answer)
{
    const ActionLedger::Entry* const last = m_ledger.last();
    if (!last)
        return answer({.kind = Kind::failed, .words = "Nothing was done on the screen that could be taken back."});
    const auto* const undo = std::get_if<ActionUndo>(&last->undo);
    if (!undo || !last->after)
        return answer({.kind = Kind::failed,
            .words = "The last thing that was done, “" + last->text + "”, cannot be undone. "
                + (undo ? std::string("What the screen showed then is not known.")
                        : std::get<std::string>(last->undo))});
    ProposedAction action{.callID = callID, .tool = "undo", .action = undo->action, .expected = undo->expected};
    action.revision = last->after->observation.revision;
    auto run = std::make_shared<Run>(Run{action, action, std::move(callID), std::move(answer)});
    run->purpose = PendingAction::Purpose::undo;
    run->chosenOn = last->after;
    start(run);
}

// ---- The way of an action

void ActionPipeline::start(const RunPointer& run)
{
    if (m_mode == HelpMode::guide)
        return finish(run, {.kind = Kind::refused, .words = guideText});
    if (!takeRight(*run))
        return finish(run, {.kind = Kind::refused, .words = busyText});
    m_run = run;
    if (needsFreshLook(*run))
        return lookFirst(run);
    carryOut(run);
}

/// With the ticket of the call that it belongs to, where that has one; else with one for itself alone.
bool ActionPipeline::takeRight(Run& run)
{
    if (m_run)
        return false;
    run.ticket = m_ports.gate.current();
    if (run.ticket)
        return run.ticket->callID == run.callID;
    run.ticket = m_ports.gate.begin(run.callID);
    run.isTicketOurs = run.ticket.has_value();
    return run.isTicketOurs;
}

bool ActionPipeline::needsFreshLook(const Run& run) const
{
    const bool isOfEarlier = run.agreed || run.purpose == PendingAction::Purpose::undo;
    if (!m_look || isOfEarlier)
        return true;
    return dependsOnFront(run.action.action) && m_ports.scheduler.now() - m_lookedAt > freshFor;
}

void ActionPipeline::lookFirst(const RunPointer& run)
{
    const LookWish wish{.image = isPlace(run->action.action) ? LookWish::Image::overview : LookWish::Image::none};
    m_ports.screen.look(wish, [self = std::weak_ptr(m_self), run](std::variant<ScreenLook, ScreenProblem> seen) {
        const auto pipeline = self.lock();
        if (!pipeline)
            return;
        ActionPipeline& that = **pipeline;
        if (run->isCancelled())
            return that.finish(run, stoppedAt(ScreenOutcome::Kind::failed));
        if (const auto* problem = std::get_if<ScreenProblem>(&seen))
            return that.finish(run, {.kind = Kind::failed, .words = "Nothing was done. " + problem->sentence});
        that.noteLook(std::move(std::get<ScreenLook>(seen)));
        if (run->chosenOn) {
            auto again = foundAgain(run->action.action, *run->chosenOn, *that.m_look);
            if (auto* problem = std::get_if<std::string>(&again))
                return that.finish(run, {.kind = Kind::failed, .words = std::move(*problem), .after = *that.m_look});
            run->action.action = std::move(std::get<ScreenAction>(again));
        }
        that.carryOut(run);
    });
}

/// The whole of what stands between an action and the screen, in its order.
void ActionPipeline::carryOut(const RunPointer& run)
{
    const ScreenLook& look = *m_look;
    run->before = m_look;
    run->action.revision = look.observation.revision;
    if (m_ports.problem)
        if (auto problem = m_ports.problem(run->action, look))
            return finish(run, {.kind = Kind::failed, .words = std::move(*problem)});
    if (m_ports.originsOf)
        run->action.origins = m_ports.originsOf(run->action.action, look);
    const ActionVerdict verdict = m_ports.judge(run->action, look);
    const ActionRisk& risk = verdict.risk;
    if (risk.kind == ActionRisk::Case::never)
        return finish(run, {.kind = Kind::refused, .words = risk.text, .question = risk.text});
    if (risk.kind == ActionRisk::Case::askFirst && run->agreed != risk.text)
        return ask(run, verdict);
    if (m_ports.judgedForm)
        run->action.action = m_ports.judgedForm(run->action.action, look);
    run->text = screenActionText(run->action.action, look.observation);
    if (auto refusal = brake(*run))
        return finish(run, {.kind = Kind::refused, .words = std::move(*refusal)});
    act(run);
}

/// A task that is carried out here has brakes of its own for its length; it does not talk to the user on the way.
std::optional<std::string> ActionPipeline::brake(const Run& run) const
{
    std::optional<int> stall;
    if (m_plan)
        stall = m_guard.planStall();
    if (run.action.source == ProposedAction::Source::engine)
        stall = 0;
    return m_guard.refusal(run.text, run.before->observation.stateKey(), stall, finishedSteps());
}

void ActionPipeline::ask(const RunPointer& run, const ActionVerdict& verdict)
{
    const std::string& question = verdict.risk.text;
    if (m_pending && spokenWords(m_pending->question) == spokenWords(question)) {
        if (!isPendingAlready(*run))
            return finish(run, {.kind = Kind::refused, .words = otherQuestionText});
    } else {
        endPending(QuestionEnd::dropped);
        m_pending = PendingAction{.number = ++m_questionNumber, .action = run->proposed, .question = question};
        m_questions.asked(verdict.reason);
    }
    // As it was judged: on this look it is what the user is asked about.
    m_pending->action.action = run->action.action;
    m_pending->action.revision = run->action.revision;
    m_pending->purpose = run->purpose;
    m_pending->look = m_look;
    m_pending->askedAt = m_ports.scheduler.now();
    m_lapse = m_ports.scheduler.after(PendingAction::longestWait, [this] { endPending(QuestionEnd::dropped); });
    openQuestion();
    finish(run, {.kind = Kind::needsYes, .words = askText, .question = question, .after = *m_look});
}

/// What the user answers is known before the model asks for it, and ends the matter where it is no.
void ActionPipeline::openQuestion()
{
    using Event = ConsentWords::Event;
    m_ports.consent.ask(m_pending->question, [self = std::weak_ptr(m_self), number = m_pending->number](Event event) {
        const auto pipeline = self.lock();
        if (!pipeline || event == Event::agreed)
            return;
        ActionPipeline& that = **pipeline;
        if (!that.m_pending || that.m_pending->number != number)
            return;
        that.dropPending(event == Event::declined ? QuestionEnd::refused : QuestionEnd::dropped);
    });
}

/// Two buttons may have one name, and so one question: a yes to the one is none to the other.
bool ActionPipeline::isPendingAlready(const Run& run) const
{
    const auto again = foundAgain(m_pending->action.action, *m_pending->look, *m_look);
    const auto* const same = std::get_if<ScreenAction>(&again);
    return same && *same == run.action.action && m_pending->purpose == run.purpose;
}

void ActionPipeline::act(const RunPointer& run)
{
    endPending(QuestionEnd::dropped);
    m_ports.screen.act(run->action.action, run->action.revision, run->ticket->cancellation,
        [self = std::weak_ptr(m_self), run](const ScreenOutcome& outcome) {
            if (const auto pipeline = self.lock())
                (*pipeline)->acted(run, outcome);
        });
}

void ActionPipeline::acted(const RunPointer& run, const ScreenOutcome& outcome)
{
    if (run->isCancelled() || outcome.kind == ScreenOutcome::Kind::stopped)
        return conclude(run, outcome, nullptr);
    m_ports.screen.look({.wait = LookWish::Wait::settled},
        [self = std::weak_ptr(m_self), run, outcome](std::variant<ScreenLook, ScreenProblem> seen) {
            const auto pipeline = self.lock();
            if (!pipeline)
                return;
            if (auto* look = std::get_if<ScreenLook>(&seen))
                (*pipeline)->noteLook(std::move(*look));
            (*pipeline)->conclude(run, outcome, std::get_if<ScreenProblem>(&seen));
        });
}

void ActionPipeline::conclude(const RunPointer& run, const ScreenOutcome& outcome, const ScreenProblem* blind)
{
    const bool isStopped = run->isCancelled() || outcome.kind == ScreenOutcome::Kind::stopped;
    const bool isSeen = m_look != run->before && !blind;
    ActionResult result;
    if (isStopped)
        result = stoppedAt(outcome.kind);
    else if (outcome.kind != ScreenOutcome::Kind::done)
        result = notDone(outcome);
    else if (isSeen)
        result = checked(run->action.expected, run->before->observation, m_look->observation);
    else
        result.words = "It was done, but what came of it can not be seen. " + (blind ? blind->sentence : "");
    if (isSeen)
        result.after = *m_look;
    if (run->purpose == PendingAction::Purpose::undo && result.kind == Kind::done && isSeen)
        result.words = effectOfUndo();
    record(*run, outcome, result);
    finish(run, std::move(result));
}

/// Nothing came between the question and it, so it is still the last that stands in the ledger.
std::string ActionPipeline::effectOfUndo() const
{
    const ActionLedger::Entry* const last = m_ledger.last();
    const auto* const undo = last ? std::get_if<ActionUndo>(&last->undo) : nullptr;
    return undo ? undo->effect : "Done.";
}

void ActionPipeline::record(const Run& run, const ScreenOutcome& outcome, const ActionResult& result)
{
    const ScreenLook& after = result.after ? *m_look : *run.before;
    const bool hasFailed = result.kind == Kind::failed || result.kind == Kind::unknown;
    m_guard.record(run.text, run.before->observation.stateKey(), after.observation.stateKey(),
        hasFailed ? ActionLoopGuard::Outcome::failed : ActionLoopGuard::Outcome::worked, finishedSteps());
    const bool isDone = outcome.kind == ScreenOutcome::Kind::done;
    if (run.purpose == PendingAction::Purpose::undo) {
        if (result.kind == Kind::done)
            m_ledger.markLastUndone();
        return;
    }
    if (outcome.kind == ScreenOutcome::Kind::failed)
        return;
    ActionLedger::Entry entry{.text = run.text};
    entry.certainty = isDone ? ActionLedger::Certainty::done : ActionLedger::Certainty::unknown;
    if (isDone && result.after) {
        entry.after = m_look;
        entry.undo = undoOf(run.action.action, *run.before, *m_look);
    } else {
        entry.undo = std::string(isDone ? "What it led to was not seen." : "Whether it was done is not known.");
    }
    m_ledger.add(std::move(entry));
}

/// The right to act goes back first: whoever is answered may propose the next one.
void ActionPipeline::finish(const RunPointer& run, ActionResult result)
{
    if (run->isTicketOurs)
        m_ports.gate.finish(*run->ticket);
    if (m_run == run)
        m_run.reset();
    m_ports.log.record("action_ended",
        {{"tool", codeWord(run->proposed.tool)}, {"kind", static_cast<int>(result.kind)},
            {"verified", result.isVerified}});
    // Taken first: whoever is answered may hold the run through what it proposes next.
    if (const Answer answer = std::exchange(run->answer, nullptr))
        answer(std::move(result));
}

// ---- Looks

void ActionPipeline::look(const LookWish& wish, Screen::Answer<ScreenLook> answer)
{
    m_ports.screen.look(
        wish, [self = std::weak_ptr(m_self), answer = std::move(answer)](std::variant<ScreenLook, ScreenProblem> seen) {
            if (const auto pipeline = self.lock())
                if (const auto* look = std::get_if<ScreenLook>(&seen))
                    (*pipeline)->noteLook(*look);
            answer(std::move(seen));
        });
}

void ActionPipeline::noteLook(ScreenLook look)
{
    m_look = std::make_shared<const ScreenLook>(std::move(look));
    m_lookedAt = m_ports.scheduler.now();
    if (!m_pending || !(targetOf(m_pending->action.action) || dependsOnFront(m_pending->action.action)))
        return;
    if (m_pending->look->observation.app != m_look->observation.app)
        endPending(QuestionEnd::dropped);
}

// ---- What goes on around it

void ActionPipeline::userSaid(const HeardUtterance&)
{
    m_guard.heardThem();
}

void ActionPipeline::userBargedIn()
{
    cancel();
}

void ActionPipeline::stopped()
{
    cancel();
}

void ActionPipeline::modeChanged(HelpMode mode)
{
    m_mode = mode;
    cancel();
}

void ActionPipeline::ended()
{
    cancel();
    m_ledger.clear();
    m_guard = {};
    m_plan.reset();
    m_questions = {};
    m_look.reset();
}

void ActionPipeline::planChanged(const TaskPlan& plan)
{
    const int finished = finishedSteps();
    const std::size_t facts = m_plan ? m_plan->facts.size() : 0;
    const bool isSame = m_plan && m_plan->goal == plan.goal;
    if (plan.goal.empty()) {
        m_plan.reset();
        return;
    }
    m_plan = plan;
    if (!isSame)
        taskBegan();
    else if (finishedSteps() > finished || plan.facts.size() > facts)
        m_guard.progressed();
}

void ActionPipeline::taskBegan()
{
    m_guard = {};
    m_questions = {};
    endPending(QuestionEnd::dropped);
}

void ActionPipeline::taskEnded()
{
    m_guard = {};
    endPending(QuestionEnd::dropped);
}

void ActionPipeline::withdrawQuestion()
{
    endPending(QuestionEnd::dropped);
}

int ActionPipeline::finishedSteps() const
{
    return m_plan ? static_cast<int>(std::ranges::count(m_plan->steps, true, &TaskPlan::Step::done)) : 0;
}

void ActionPipeline::cancel()
{
    m_ports.gate.cancel();
    endPending(QuestionEnd::dropped);
}

void ActionPipeline::endPending(ActionObserver::QuestionEnd end)
{
    if (m_pending)
        m_ports.consent.withdraw(m_pending->question);
    dropPending(end);
}

/// The question itself is over already, or another one takes its place.
void ActionPipeline::dropPending(ActionObserver::QuestionEnd end)
{
    m_lapse.cancel();
    if (const auto ended = std::exchange(m_pending, std::nullopt))
        tellQuestionEnded(ended->action, end, {});
}

void ActionPipeline::tellQuestionEnded(
    const ProposedAction& action, ActionObserver::QuestionEnd end, const ActionResult& result)
{
    for (ActionObserver* const observer : std::vector(m_observers))
        observer->questionEnded(action, end, result);
}

} // namespace quorvell
