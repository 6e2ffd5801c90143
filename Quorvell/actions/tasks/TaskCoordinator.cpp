// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/TaskCoordinator.h"

#include "QuorvellCore/text/Characters.h"

#include <utility>
#include <variant>

namespace quorvell {

TaskCoordinator::TaskCoordinator(Ports ports)
    : m_ports(std::move(ports))
    , m_self(std::make_shared<TaskCoordinator*>(this))
{
}

void TaskCoordinator::startTask(const LiveFunctionCall& call, ToolReply reply)
{
    if (!TaskPlan::create(call.args))
        return reply.fail("Nothing was begun: give the goal, at least one step, and in done_when what will be seen "
                          "when it is finished.");
    m_actions = 0;
    m_questions = 0;
    m_last.reset();
    if (m_ports.taskBegan)
        m_ports.taskBegan();
    reply.answer(ToolResult(ToolStatus::changed).add("plan", m_ports.plan().json()));
}

void TaskCoordinator::updatePlan(const LiveFunctionCall& call, ToolReply reply)
{
    if (m_ports.plan().goal.empty())
        return reply.fail("There is no open plan. Begin one with start_task.");
    // It is in the plan already; what could not be used of it shows when it is put into a copy once more.
    TaskPlan again = m_ports.plan();
    const TaskPlanChange change = again.update(call.args);
    ToolResult result = ToolResult(ToolStatus::changed).add("plan", m_ports.plan().json());
    if (!change.problems.empty())
        result.add("problems", change.problems);
    reply.answer(result);
}

void TaskCoordinator::taskFinished(const LiveFunctionCall& call, ToolReply reply)
{
    const auto gate = CompletionGate::judge(m_ports.plan(), call.string("evidence").value_or(""), m_last, nullptr);
    if (gate.verdict != CompletionGate::Verdict::needsLook)
        return judged(gate, nullptr, std::move(reply));
    auto shared = std::make_shared<ToolReply>(std::move(reply));
    m_ports.actions.look({.wait = LookWish::Wait::settled},
        [self = std::weak_ptr(m_self), call, shared](const std::variant<ScreenLook, ScreenProblem>& seen) {
            if (const auto coordinator = self.lock())
                (*coordinator)->looked(call, seen, std::move(*shared));
        });
}

void TaskCoordinator::looked(
    const LiveFunctionCall& call, const std::variant<ScreenLook, ScreenProblem>& seen, ToolReply reply)
{
    if (const auto* problem = std::get_if<ScreenProblem>(&seen))
        return judged({CompletionGate::Verdict::notShown,
                          "Nothing that was done last shows that it's finished, and the screen can't be seen: "
                              + problem->sentence + " Don't tell them it's done."},
            nullptr, std::move(reply));
    const ScreenLook& look = std::get<ScreenLook>(seen);
    // Anything may have happened meanwhile.
    judged(CompletionGate::judge(m_ports.plan(), call.string("evidence").value_or(""), m_last, &look.observation),
        &look, std::move(reply));
}

void TaskCoordinator::judged(const CompletionGate& gate, const ScreenLook* look, ToolReply reply)
{
    const bool isFinished = gate.verdict == CompletionGate::Verdict::finished;
    m_ports.log.record(
        "task_finish_judged", {{"finished", isFinished}, {"actions", m_actions}, {"questions", m_questions}});
    ToolResult result(isFinished ? ToolStatus::finished : ToolStatus::refused);
    result.advise(isFinished ? "The plan is closed. Tell them in a sentence what they have now." : gate.missing);
    result.add("actions", m_actions).add("questions", m_questions);
    if (look)
        result.add("screen", m_ports.screen(*look));
    if (isFinished) {
        m_ports.endPlan();
        m_last.reset();
        if (m_ports.taskEnded)
            m_ports.taskEnded();
    }
    reply.answer(result);
}

// ---- What is done meanwhile

void TaskCoordinator::actionEnded(const ProposedAction& action, const ActionResult& result)
{
    note(action, result);
}

void TaskCoordinator::questionEnded(const ProposedAction& action, QuestionEnd end, const ActionResult& result)
{
    if (end == QuestionEnd::carriedOut)
        return note(action, result);
    if (m_last && m_last->end == LastStep::End::waits)
        m_last = LastStep{};
}

void TaskCoordinator::note(const ProposedAction& action, const ActionResult& result)
{
    const std::optional<Postcondition::Kind> expected =
        action.expected ? std::optional(action.expected->kind) : std::nullopt;
    switch (result.kind) {
    case ActionResult::Kind::refused:
        return; // Nothing was done, so what was seen before still holds.
    case ActionResult::Kind::needsYes:
        ++m_questions;
        m_last = LastStep{LastStep::End::waits, expected};
        return;
    case ActionResult::Kind::done:
    case ActionResult::Kind::failed:
    case ActionResult::Kind::stopped:
    case ActionResult::Kind::unknown:
        ++m_actions;
        m_last = LastStep{result.kind == ActionResult::Kind::done && result.isVerified ? LastStep::End::worked
                                                                                       : LastStep::End::unproven,
            expected};
    }
}

} // namespace quorvell
