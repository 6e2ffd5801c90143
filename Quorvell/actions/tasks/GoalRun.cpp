// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/GoalRun.h"

#include "Quorvell/actions/tasks/GoalSteps.h"
#include "Quorvell/actions/tasks/UndoGoal.h"
#include "Quorvell/actions/tasks/WorkPermit.h"
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

#include <utility>

namespace quorvell {

using Kind = GoalOutcome::Kind;

struct GoalRun::Run {
    Run(GoalRun& owner, const Ports& ports)
        : permit(
            ports.scheduler, ports.gate, longestTime, [&owner] { owner.stop(); }, [&owner] { owner.timeIsUp(); })
        , toldAt(ports.scheduler.now())
    {
    }

    std::string goal;
    std::string callID;
    std::optional<ToolReply> reply; ///< Until the call is answered.
    StepDecider decider;

    WorkPermit permit;
    bool isActing = false; ///< An action was handed on and has not ended.
    bool isStopped = false; ///< What acts is still to end.
    bool isOutOfTime = false; ///< Likewise.
    bool isWaiting = false; ///< For the user's yes.
    std::optional<ActionResult> confirmed; ///< What came of it after their yes: the task is about to go on.
    std::string question; ///< That it waits for.

    std::optional<ScreenLook> screen; ///< The latest.
    bool hasSeenImage = false; ///< For the step that is being decided.
    GoalSteps steps;
    int questions = 0;
    SessionTime toldAt;
    std::size_t toldSteps = 0;

    StepWish asked;
    TimerHandle next; ///< What follows in a moment.
};

GoalRun::GoalRun(Ports ports)
    : m_ports(std::move(ports))
{
}

GoalRun::~GoalRun() = default;

bool GoalRun::isRunning() const
{
    return m_run && !m_run->isWaiting;
}

bool GoalRun::isWaiting() const
{
    return m_run && m_run->isWaiting;
}

std::string GoalRun::goal() const
{
    return m_run ? m_run->goal : std::string();
}

// ---- A goal comes in

void GoalRun::start(const LiveFunctionCall& call, ToolReply reply)
{
    const std::string goal = trimmed(repairUtf8(call.string("goal").value_or("")));
    if (goal.empty())
        return reply.fail("Nothing was done: goal is missing. Say in one or two sentences what is wanted.");
    if (characterCount(goal) > DecisionContext::longestGoal)
        return reply.fail("Nothing was done: the goal is too long. Say it in one or two sentences.");
    if (UndoGoal::isOne(goal))
        return m_ports.undoLast ? m_ports.undoLast(call.id, UndoGoal::teller(std::move(reply), m_ports.telling))
                                : reply.fail("Nothing can be undone here.");
    if (m_ports.mode() == HelpMode::guide)
        return reply.answer(ToolResult(ToolStatus::refused)
                                .advise("In Guide mode nothing is done for them: show them each step with point_at. "
                                        "Only they change the mode."));
    if (isRunning())
        return reply.fail("A task is being carried out already. Wait for its result before you begin another.");
    const auto run = std::make_shared<Run>(*this, m_ports);
    if (!run->permit.take(call.id))
        return reply.fail(
            "An action is still running. Wait for its result and fresh screen before choosing the next step.");
    m_run = run; // One that waits for a yes is given up by the one that begins.
    m_run->goal = goal;
    m_run->callID = call.id;
    m_run->reply = std::move(reply);
    m_run->decider = m_ports.decider();
    m_ports.log.record("goal_begun", Json::object());
    look({.wait = LookWish::Wait::settled});
}

// ---- Step by step

void GoalRun::look(const LookWish& wish)
{
    m_ports.actions.look(wish, [this, weak = std::weak_ptr(m_run)](std::variant<ScreenLook, ScreenProblem> seen) {
        if (const auto run = weak.lock(); run && run == m_run && !run->isWaiting)
            looked(std::move(seen));
    });
}

void GoalRun::looked(std::variant<ScreenLook, ScreenProblem> seen)
{
    if (const auto* problem = std::get_if<ScreenProblem>(&seen))
        return end(Kind::gaveUp, problem->sentence);
    m_run->screen = std::get<ScreenLook>(std::move(seen));
    if (m_run->hasSeenImage && !m_run->screen->image)
        return end(Kind::gaveUp, "I can't tell from what is on the screen what to do next.");
    decide();
}

void GoalRun::decide()
{
    DecisionContext context{m_run->goal, m_run->screen->observation, m_run->steps.history(), {}};
    context.image = std::exchange(m_run->screen->image, std::nullopt);
    m_run->asked =
        m_ports.deciding.ask(m_run->decider, std::move(context), [this](const StepAnswer& answer) { decided(answer); });
}

void GoalRun::decided(const StepAnswer& answer)
{
    if (const auto* error = std::get_if<DecisionError>(&answer))
        return end(Kind::gaveUp, "I couldn't find out what to do next. " + error->message);
    const RoutedDecision& routed = std::get<RoutedDecision>(answer);
    const AutomationDecision& decision = routed.decision;
    m_ports.log.record("step_decided",
        {{"tier", std::string(routed.tier)}, {"kind", std::string(storedText(decision.kind))},
            {"milliseconds", static_cast<std::int64_t>(routed.milliseconds)}});
    switch (decision.kind) {
    case AutomationDecision::Kind::action:
        return act(decision);
    case AutomationDecision::Kind::finished:
        return finished(decision);
    case AutomationDecision::Kind::clarify:
        return needUser(firstCharacters(onOneLine(repairUtf8(decision.message)), longestQuestion));
    case AutomationDecision::Kind::vision:
        return wantImage();
    }
}

void GoalRun::wantImage()
{
    if (std::exchange(m_run->hasSeenImage, true))
        return end(Kind::gaveUp, "I can't tell from what is on the screen what to do next.");
    look({.image = LookWish::Image::overview, .wait = LookWish::Wait::settled});
}

void GoalRun::act(const AutomationDecision& decision)
{
    if (m_run->steps.areTooMany())
        return end(Kind::gaveUp, "That is more steps than I take at once.");
    m_run->hasSeenImage = false;
    const AutomationObservation& observation = m_run->screen->observation;
    if (!m_run->steps.begin(decision, observation, m_run->goal))
        return notPossible();
    const AutomationAction& action = *decision.action;
    ProposedAction proposed{.callID = m_run->callID,
        .tool = std::string(storedText(action.tool)),
        .action = action,
        .expected = decision.expected,
        .source = ProposedAction::Source::engine,
        .revision = observation.revision};
    m_run->isActing = true;
    m_ports.actions.run(std::move(proposed), [this, weak = std::weak_ptr(m_run)](const ActionResult& result) {
        if (const auto run = weak.lock(); run && run == m_run)
            acted(result);
    });
}

/// The decider is told by the history, and chooses anew on a fresh look.
void GoalRun::notPossible()
{
    m_run->steps.note(false);
    if (!mustEnd())
        look({.wait = LookWish::Wait::settled});
}

void GoalRun::acted(const ActionResult& result)
{
    m_run->isActing = false;
    if (result.after)
        m_run->screen = result.after;
    switch (result.kind) {
    case ActionResult::Kind::done:
        m_run->steps.note(result.isVerified);
        break;
    case ActionResult::Kind::failed:
        m_run->steps.note(false);
        break;
    case ActionResult::Kind::refused:
        return refused(result);
    case ActionResult::Kind::needsYes:
        return mustEnd() ? void() : waitForYes(result);
    case ActionResult::Kind::stopped:
        m_run->isStopped = true;
        break;
    case ActionResult::Kind::unknown:
        m_run->steps.note(false);
        return end(Kind::gaveUp, "The application didn't answer, so the last step may be done or not.");
    }
    if (mustEnd())
        return;
    if (!result.after)
        return look({.wait = LookWish::Wait::settled});
    tellProgress();
    decide();
}

/// What the guard forbids is the user's own to do; a brake's words are for the model.
void GoalRun::refused(const ActionResult& result)
{
    if (mustEnd())
        return;
    if (!result.question.empty())
        return needUser(result.question);
    GoalOutcome refusal = outcome(Kind::gaveUp, "I couldn't go on by myself.");
    refusal.advice = result.words;
    end(std::move(refusal));
}

void GoalRun::needUser(std::string question)
{
    GoalOutcome theirs = outcome(Kind::needsUser, {});
    theirs.question = question.empty() ? "How would you like me to go on?" : std::move(question);
    end(std::move(theirs));
}

bool GoalRun::mustEnd()
{
    if (m_run->isStopped)
        end(Kind::stopped, {});
    else if (m_run->isOutOfTime)
        end(Kind::gaveUp, "It took too long.");
    else if (m_run->steps.keepFailing())
        end(Kind::gaveUp, "What I tried didn't work.");
    else
        return false;
    return true;
}

void GoalRun::finished(const AutomationDecision& decision)
{
    const bool isSeen = m_run->steps.wasLastSeenToWork();
    GoalOutcome done = outcome(isSeen ? Kind::finished : Kind::unproven, {});
    done.engineWords = decision.message;
    std::vector<MacroStep> way = m_run->steps.way();
    if (isSeen && !way.empty() && m_ports.learn)
        m_ports.learn(m_run->goal, std::move(way));
    end(std::move(done));
}

// ---- A step needs the user's yes

void GoalRun::waitForYes(const ActionResult& result)
{
    ++m_run->questions;
    m_run->permit.giveBack();
    m_run->isWaiting = true;
    m_run->question = result.question;
    GoalOutcome asks = outcome(Kind::needsYes, {});
    asks.question = result.question;
    if (auto reply = std::exchange(m_run->reply, std::nullopt))
        reply->answer(asks.result(m_ports.telling));
    else
        m_ports.tell({.text = asks.event(m_ports.telling)});
}

void GoalRun::actionEnded(const ProposedAction& action, const ActionResult& result)
{
    if (!isWaiting() || action.callID != m_run->callID || result.kind != ActionResult::Kind::needsYes
        || result.question == m_run->question)
        return;
    ++m_run->questions; // The same step, with another question.
    m_run->question = result.question;
    m_run->next.cancel();
}

void GoalRun::questionEnded(const ProposedAction& action, QuestionEnd end, const ActionResult& result)
{
    if (!isWaiting() || m_run->confirmed || action.callID != m_run->callID)
        return;
    switch (end) {
    case QuestionEnd::carriedOut:
        if (result.kind == ActionResult::Kind::needsYes)
            return actionEnded(action, result);
        m_run->confirmed = result;
        return later(&GoalRun::confirmed);
    case QuestionEnd::refused:
    case QuestionEnd::dropped: // Another question of the same step may take its place.
        return later(&GoalRun::dropped);
    }
}

bool GoalRun::carryOn(ToolReply& reply)
{
    if (!m_run || !m_run->confirmed)
        return false;
    m_run->reply = std::move(reply);
    return true;
}

void GoalRun::confirmed()
{
    const ActionResult result = *std::exchange(m_run->confirmed, std::nullopt);
    m_run->isWaiting = false;
    m_run->toldAt = m_ports.scheduler.now();
    if (!m_run->permit.take(m_run->callID)) {
        m_run->steps.note(result.kind == ActionResult::Kind::done && result.isVerified);
        return end(Kind::gaveUp, "Something else is being done on the screen now.");
    }
    acted(result);
}

void GoalRun::dropped()
{
    end(Kind::stopped, "There was no yes to its question.");
}

// ---- The end

void GoalRun::timeIsUp()
{
    if (!m_run->isActing)
        return end(Kind::gaveUp, "It took too long.");
    m_run->isOutOfTime = true;
    m_run->permit.stopAction();
}

void GoalRun::stop()
{
    if (!m_run || m_run->isStopped)
        return;
    if (!m_run->isActing)
        return end(Kind::stopped, {});
    m_run->isStopped = true; // What acts ends by itself, and tells how far it got.
    m_run->permit.stopAction();
}

void GoalRun::tellProgress()
{
    const SessionTime now = m_ports.scheduler.now();
    const std::size_t steps = m_run->steps.history().size();
    if (now - m_run->toldAt < progressPeriod || steps == m_run->toldSteps)
        return;
    m_run->toldAt = now;
    m_run->toldSteps = steps;
    m_ports.tell({.text = std::string(QuorvellPrompt::eventPrefix) + " The task that do_task began is still going on: "
            + std::to_string(steps) + " steps so far. There is nothing for you to do; its result follows.",
        .answer = LiveMessageText::Answer::notWanted,
        .lateness = LiveMessageText::Lateness::worthless});
}

void GoalRun::later(void (GoalRun::*what)())
{
    m_run->next = m_ports.scheduler.after(std::chrono::milliseconds::zero(), [this, what] { (this->*what)(); });
}

GoalOutcome GoalRun::outcome(GoalOutcome::Kind kind, std::string reason) const
{
    return {.kind = kind,
        .reason = std::move(reason),
        .steps = m_run->steps.history(),
        .questions = m_run->questions,
        .screen = m_run->screen};
}

void GoalRun::end(GoalOutcome::Kind kind, std::string reason)
{
    end(outcome(kind, std::move(reason)));
}

void GoalRun::end(GoalOutcome outcome)
{
    const auto run = std::exchange(m_run, nullptr);
    run->asked.abandon();
    run->permit.giveBack();
    m_ports.log.record("goal_ended",
        {{"status", std::string(storedText(outcome.status()))}, {"steps", outcome.steps.size()},
            {"questions", run->questions}});
    if (run->reply)
        return run->reply->answer(outcome.result(m_ports.telling));
    m_ports.tell({.text = outcome.event(m_ports.telling),
        .answer =
            outcome.kind == Kind::stopped ? LiveMessageText::Answer::notWanted : LiveMessageText::Answer::wanted});
}

} // namespace quorvell
