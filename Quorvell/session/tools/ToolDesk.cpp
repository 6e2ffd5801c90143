// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/ToolDesk.h"

#include "Quorvell/loop/FreshUUID.h"
#include "QuorvellCore/live/tools/ToolCatalogue.h"
#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/live/tools/ToolTraits.h"
#include "QuorvellCore/text/CodeWord.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace quorvell {

namespace {

bool changesSomething(const ToolTraits* tool)
{
    return !tool || tool->changes;
}

/// For the model, of a tool that has not answered. The first sentence may reach the user as it stands.
std::string overdueText(const LiveFunctionCall& call, std::chrono::milliseconds waited)
{
    const std::string passed =
        "No answer came within " + std::to_string(waited / std::chrono::seconds(1)) + " seconds, so it ";
    return changesSomething(ToolTraits::find(call.name))
        ? passed
            + "may be done or not. Tell them just that, neither that it is done nor that it failed. Call it not again "
              "for "
              "the same; its result may still come."
        : passed + "is not known. Tell them so plainly and offer to try again later.";
}

} // namespace

ToolDesk::ToolDesk(Ports ports, SessionLimits limits)
    : m_ports(std::move(ports))
    , m_limits(limits)
    , m_execution(freshUUID)
    , m_self(std::make_shared<ToolDesk*>(this))
{
}

void ToolDesk::begin()
{
    m_plan = {};
    m_nextStep = nullptr;
    m_actionReplies.clear();
}

// ---- A call comes in

void ToolDesk::handle(const std::vector<LiveFunctionCall>& calls, std::uint64_t askedBy)
{
    for (const LiveFunctionCall& call : calls) {
        const Key key{askedBy, call.id};
        if (isSeen(key)) {
            m_ports.log.record("tool_call_repeated", {{"name", codeWord(call.name)}});
            continue;
        }
        remember(key);
        m_ports.log.record("tool_called", {{"name", codeWord(call.name)}});
        m_ports.observer.toolCalled(call);
        runFor(call, askedBy);
    }
}

void ToolDesk::noteRequests(std::uint64_t count)
{
    if (std::exchange(m_requests, count) == count)
        return;
    m_allowance.userAsked();
    m_isStopTold = false;
}

bool ToolDesk::isNews(const std::vector<LiveFunctionCall>& calls, std::uint64_t askedBy) const
{
    return std::any_of(calls.begin(), calls.end(), [&](const LiveFunctionCall& call) {
        return !isSeen({askedBy, call.id});
    });
}

bool ToolDesk::isSeen(const Key& key) const
{
    return std::find(m_seen.begin(), m_seen.end(), key) != m_seen.end();
}

void ToolDesk::remember(const Key& key)
{
    m_seen.push_back(key);
    if (m_seen.size() > rememberedCalls)
        m_seen.pop_front();
}

void ToolDesk::runFor(const LiveFunctionCall& call, std::uint64_t askedBy)
{
    const Key key{askedBy, call.id};
    const bool isTooMuch = m_running.size() >= mostRunning;
    m_running.push_back({key, call, false, m_ports.scheduler.after(longest(call), [this, key] { overdue(key); })});
    if (!m_progressTimer.isSet())
        m_progressTimer =
            m_ports.scheduler.every(m_limits.progress, [this] { m_ports.report(tool_report::TakesLong{}); });
    ToolReply reply([self = std::weak_ptr(m_self), key](const Json& result) {
        if (const auto desk = self.lock())
            (*desk)->answered(key, result);
    });
    if (isTooMuch)
        return reply.fail("Too many calls at once, so this one was not run. Wait for the results of the others first.");
    if (!isAllowed(call, reply))
        return m_ports.log.record("tool_call_refused", {{"name", call.name}});
    run(call, std::move(reply), Conversation::live);
}

/// The help mode is the user's brake: it goes by their words alone, and must not wait.
bool ToolDesk::isAllowed(const LiveFunctionCall& call, ToolReply& reply)
{
    using Verdict = CallAllowance::Verdict;
    const ToolTraits* tool = ToolTraits::find(call.name);
    if (tool && tool->isOfSession)
        return true;
    const auto kind = changesSomething(tool) ? CallAllowance::Kind::changes : CallAllowance::Kind::looks;
    const Verdict verdict = m_allowance.judge(kind, m_ports.scheduler.now());
    // Who does not stop does not ask either, be it a model or the rules on this computer.
    if (verdict != Verdict::granted && !std::exchange(m_isStopTold, true))
        m_ports.observer.problemArose(
            "This would be more than anybody asks for at once, so no more is done. Say whether "
            "it shall go on.");
    switch (verdict) {
    case Verdict::granted:
        return true;
    case Verdict::askUser:
        reply.answer(ToolResult(ToolStatus::needsConfirmation)
                         .ask("I have changed " + std::to_string(CallAllowance::mostChanges)
                             + " things for this request. Shall I go on?")
                         .advise("This call was not run, and nothing more is changed until they have answered. Ask the "
                                 "question, and wait."));
        return false;
    case Verdict::tooFast:
        reply.fail("This call was not run: more than " + std::to_string(CallAllowance::mostChangesOfAMinute)
            + " changes within a minute are not made. Tell them what is done and what is left, and ask whether to go "
              "on.");
        return false;
    case Verdict::tooMany:
        reply.fail(
            "This call was not run: there were too many for one request. Give no more of them. Tell them what is "
            "known and what is not, and wait for their words.");
        return false;
    }
    return false;
}

void ToolDesk::run(const LiveFunctionCall& call, ToolReply reply, Conversation conversation)
{
    if (conversation == Conversation::none)
        return reply.fail("No active conversation.");
    if (call.wasCutOff())
        return reply.fail(ToolDispatcher::cutOffText(call.name));
    takePlan(call);
    const ToolTraits* tool = ToolTraits::find(call.name);
    if (tool && tool->actsOnScreen)
        return act(call, std::move(reply));
    if (tool && tool->isOfSession)
        return m_ports.report(tool_report::HelpModeAsked{call, std::move(reply)});
    m_ports.tools.run(call, std::move(reply));
}

void ToolDesk::takePlan(const LiveFunctionCall& call)
{
    const TaskPlan before = m_plan;
    const bool isOwned = m_ports.tools.hasOwner(call.name);
    if (isOwned && call.name == "start_task")
        m_plan = TaskPlan::create(call.args).value_or(m_plan);
    else if (isOwned && call.name == "update_plan")
        updatePlan(call.args);
    else if (const Json* update = memberOf(call.args, "plan_update");
             update && ToolCatalogue::planUpdateTools.contains(call.name))
        updatePlan(*update);
    if (m_plan != before) {
        m_ports.observer.planChanged(m_plan);
        m_ports.watch.planChanged(m_plan);
    }
    const Json* next = memberOf(call.args, "then");
    if (ToolCatalogue::nextStepTools.contains(call.name))
        m_nextStep = next ? *next : Json();
}

void ToolDesk::updatePlan(const Json& changes)
{
    const TaskPlanChange change = m_plan.update(changes);
    m_ports.log.record("plan_updated", {{"finished", change.finished.size()}, {"learned", change.learned.size()}});
}

void ToolDesk::endPlan()
{
    m_plan = {};
    m_ports.observer.planChanged(m_plan);
}

/// One at a time; the next one may only be chosen on the screen that this one leaves behind.
void ToolDesk::act(const LiveFunctionCall& call, ToolReply reply)
{
    const auto ticket = m_execution.begin(call.id);
    if (!ticket)
        return reply.fail(
            "An action is still running. Wait for its result and fresh screen before choosing the next step.");
    auto shared = std::make_shared<ToolReply>(std::move(reply));
    m_ports.tools.run(call, ToolReply([self = std::weak_ptr(m_self), ticket = *ticket, shared](const Json& result) {
        if (const auto desk = self.lock())
            (*desk)->m_execution.finish(ticket);
        shared->answer(result);
    }));
}

// ---- A call is taken back

void ToolDesk::cancel(const std::vector<std::string>& ids)
{
    for (const std::string& id : ids) {
        if (isActing(id))
            cancelAction();
        for (Running& call : m_running)
            if (call.key.second == id)
                call.isCancelled = true;
        m_ports.log.record("tool_call_cancelled", {{"id", codeWord(id)}});
    }
}

void ToolDesk::cancelAction()
{
    m_execution.cancel();
}

bool ToolDesk::isActing(const std::string& callID) const
{
    const auto acting = m_execution.current();
    return acting && acting->callID == callID;
}

// ---- A call is answered

void ToolDesk::answered(const Key& key, const Json& result)
{
    const auto found = std::ranges::find(m_running, key, &Running::key);
    if (found == m_running.end())
        return answeredLate(key, result);
    Running call = std::move(*found);
    m_running.erase(found);
    pass(std::move(call), result, tool_report::Answered::Time::due);
}

/// Nobody waits for ever: the model is told what is known, which is that nothing is.
void ToolDesk::overdue(Key key) // By value: it outlives the timer that it comes from.
{
    const auto found = std::ranges::find(m_running, key, &Running::key);
    if (found == m_running.end())
        return;
    Running call = std::move(*found);
    m_running.erase(found);
    if (isActing(call.call.id))
        cancelAction();
    m_ports.log.record("tool_given_up", {{"name", call.call.name}});
    m_overdue.push_back({key, call.call, call.isCancelled});
    if (m_overdue.size() > mostOverdue)
        m_overdue.pop_front();
    const auto sentence = ToolResult::failed(overdueText(call.call, longest(call.call)));
    pass(std::move(call), sentence.json(), tool_report::Answered::Time::due);
}

/// What was looked up is of no use any more; what was changed, or was not, must be told.
void ToolDesk::answeredLate(const Key& key, const Json& result)
{
    const auto found = std::ranges::find(m_overdue, key, &Running::key);
    if (found == m_overdue.end())
        return;
    Running call = std::move(*found);
    m_overdue.erase(found);
    call.isCancelled = call.isCancelled || !changesSomething(ToolTraits::find(call.call.name));
    m_ports.log.record("tool_answered_late", {{"name", call.call.name}});
    pass(std::move(call), result, tool_report::Answered::Time::late);
}

void ToolDesk::pass(Running call, const Json& result, tool_report::Answered::Time time)
{
    if (m_running.empty())
        m_progressTimer.cancel();
    const LiveResponseScheduling scheduling = schedulingOf(call);
    const auto [line, id] = call.key;
    tool_report::Answered answer{{std::move(call.call), result}, scheduling, line, time};
    m_ports.observer.toolAnswered({id, answer.answered.call.name, result});
    m_actionReplies.push_back(answer.answered);
    if (m_actionReplies.size() > keptReplies)
        m_actionReplies.pop_front();
    m_ports.report(std::move(answer));
}

/// What works the screen, carries out a whole goal or waits for a login takes its time.
std::chrono::milliseconds ToolDesk::longest(const LiveFunctionCall& call) const
{
    const ToolTraits* tool = ToolTraits::find(call.name);
    const bool isTask = tool && (tool->actsOnScreen || tool->isTiered || tool->group == ToolGroup::connectedApps);
    return isTask ? m_limits.taskAnswer : m_limits.toolAnswer;
}

LiveResponseScheduling ToolDesk::schedulingOf(const Running& call)
{
    if (call.isCancelled)
        return LiveResponseScheduling::silent;
    const ToolTraits* tool = ToolTraits::find(call.call.name);
    return tool && tool->interrupts ? LiveResponseScheduling::interrupt : LiveResponseScheduling::whenIdle;
}

std::vector<LiveFunctionCall> ToolDesk::runningCalls() const
{
    std::vector<LiveFunctionCall> calls;
    for (const Running& running : m_running)
        calls.push_back(running.call);
    return calls;
}

} // namespace quorvell
