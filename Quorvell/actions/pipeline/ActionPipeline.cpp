// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ActionPipeline.h"

#include "Quorvell/actions/pipeline/ActionOutcome.h"
#include "Quorvell/actions/pipeline/FoundAgain.h"
#include "Quorvell/actions/pipeline/ScreenActionText.h"
#include "QuorvellCore/text/CodeWord.h"

#include <nlohmann/json.hpp>

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
    , m_question(m_ports.scheduler, m_ports.consent,
          [this](const ProposedAction& action, QuestionEnd end) { tellQuestionEnded(action, end, {}); })
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
    m_question.dropIfTooOld();
    if (!pending())
        return answer(std::nullopt);
    m_ports.consent.settleWhenHeard(pending()->question,
        [self = std::weak_ptr(m_self), callID = std::move(callID), number = pending()->number,
            answer = std::move(answer)](PendingConsent::Answer settled) mutable {
            const auto pipeline = self.lock();
            if (!pipeline)
                return;
            const auto& pending = (*pipeline)->pending();
            if (!pending || pending->number != number) // Whatever ended it meanwhile.
                return answer(std::nullopt);
            (*pipeline)->answerConfirm(std::move(callID), settled, answer);
        });
}

void ActionPipeline::answerConfirm(std::string callID, PendingConsent::Answer settled, const ConfirmAnswer& answer)
{
    using Yes = PendingConsent::Answer;
    if (settled == Yes::no)
        m_question.drop(QuestionEnd::refused);
    if (settled == Yes::borrowed)
        m_question.putAgain();
    if (settled != Yes::yes)
        return answer(std::nullopt);

    PendingAction agreed = m_question.take();
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
    const ActionUndo* const undo = m_ledger.wayBack();
    if (!undo)
        return answer({.kind = Kind::failed, .words = m_ledger.whyNoWayBack()});
    const auto& chosenOn = m_ledger.last()->after;
    ProposedAction action{.callID = callID, .tool = "undo", .action = undo->action, .expected = undo->expected};
    action.revision = chosenOn->observation.revision;
    auto run = std::make_shared<Run>(Run{action, action, std::move(callID), std::move(answer)});
    run->purpose = PendingAction::Purpose::undo;
    run->chosenOn = chosenOn;
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
            return that.finish(run, ActionOutcome::stoppedAt(ScreenOutcome::Kind::failed));
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
    if (auto refusal = m_brakes.refusal(run->text, look.observation, run->action.source))
        return finish(run, {.kind = Kind::refused, .words = std::move(*refusal)});
    act(run);
}

void ActionPipeline::ask(const RunPointer& run, const ActionVerdict& verdict)
{
    const std::string& question = verdict.risk.text;
    // As it was judged: on this look it is what the user is asked about.
    PendingAction asked{.action = run->action, .question = question, .look = m_look, .purpose = run->purpose};
    if (!m_question.isInTheseWords(question)) {
        m_questions.asked(verdict.reason);
        m_question.open(std::move(asked));
    } else if (m_question.isAbout(asked)) {
        m_question.renew(std::move(asked));
    } else {
        return finish(run, {.kind = Kind::refused, .words = otherQuestionText});
    }
    finish(run, {.kind = Kind::needsYes, .words = askText, .question = question, .after = *m_look});
}

void ActionPipeline::act(const RunPointer& run)
{
    withdrawQuestion();
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
    const ScreenLook* const after = m_look != run->before && !blind ? m_look.get() : nullptr;
    ActionResult result = isStopped ? ActionOutcome::stoppedAt(outcome.kind)
                                    : ActionOutcome::of(outcome, run->action.expected, *run->before, after, blind);
    if (after)
        result.after = *after;
    const ActionUndo* const undo = run->purpose == PendingAction::Purpose::undo ? m_ledger.wayBack() : nullptr;
    if (undo && result.kind == Kind::done && after)
        result.words = undo->effect;
    record(*run, outcome, result);
    finish(run, std::move(result));
}

void ActionPipeline::record(const Run& run, const ScreenOutcome& outcome, const ActionResult& result)
{
    const ScreenLook& after = result.after ? *m_look : *run.before;
    const bool hasFailed = result.kind == Kind::failed || result.kind == Kind::unknown;
    m_brakes.record(run.text, run.before->observation, after.observation,
        hasFailed ? ActionLoopGuard::Outcome::failed : ActionLoopGuard::Outcome::worked);
    if (run.purpose == PendingAction::Purpose::forward)
        m_ledger.add(run.text, run.action.action, outcome.kind, *run.before, result.after ? m_look : nullptr);
    else if (result.kind == Kind::done)
        m_ledger.markLastUndone();
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
    m_question.noteLook(*m_look);
}

// ---- What goes on around it

void ActionPipeline::userSaid(const HeardUtterance&)
{
    m_brakes.userSaid();
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
    m_brakes.forget();
    m_questions = {};
    m_look.reset();
}

void ActionPipeline::planChanged(const TaskPlan& plan)
{
    if (m_brakes.planChanged(plan))
        taskBegan();
}

void ActionPipeline::taskBegan()
{
    m_questions = {};
    taskEnded();
}

void ActionPipeline::taskEnded()
{
    m_brakes.taskChanged();
    withdrawQuestion();
}

void ActionPipeline::withdrawQuestion()
{
    m_question.end(QuestionEnd::dropped);
}

void ActionPipeline::cancel()
{
    m_ports.gate.cancel();
    withdrawQuestion();
}

void ActionPipeline::tellQuestionEnded(
    const ProposedAction& action, ActionObserver::QuestionEnd end, const ActionResult& result)
{
    for (ActionObserver* const observer : std::vector(m_observers))
        observer->questionEnded(action, end, result);
}

} // namespace quorvell
