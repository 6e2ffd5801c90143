// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/ToolDesk.h"

#include "Quorvell/loop/FreshUUID.h"
#include "QuorvellCore/live/tools/ToolCatalogue.h"
#include "QuorvellCore/live/tools/ToolTraits.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

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
            m_ports.log.record("tool_call_repeated", {{"name", call.name}});
            continue;
        }
        remember(key);
        m_ports.log.record("tool_called", {{"name", call.name}});
        m_ports.observer.toolCalled(call);
        runFor(call, askedBy);
    }
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
    m_running.push_back({key, call});
    if (!m_progressTimer.isSet())
        m_progressTimer =
            m_ports.scheduler.every(m_limits.progress, [this] { m_ports.report(tool_report::TakesLong{}); });
    ToolReply reply([self = std::weak_ptr(m_self), key](const Json& result) {
        if (const auto desk = self.lock())
            (*desk)->answered(key, result);
    });
    if (isTooMuch)
        return reply.fail("Too many calls at once, so this one was not run. Wait for the results of the others first.");
    run(call, std::move(reply), Conversation::live);
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
    if (m_plan != before)
        m_ports.observer.planChanged(m_plan);
    const Json* next = memberOf(call.args, "then");
    if (ToolCatalogue::nextStepTools.contains(call.name))
        m_nextStep = next ? *next : Json();
}

void ToolDesk::updatePlan(const Json& changes)
{
    const TaskPlanChange change = m_plan.update(changes);
    m_ports.log.record("plan_updated", {{"finished", change.finished.size()}, {"learned", change.learned.size()}});
}

/// One at a time; the next one may only be chosen on the screen that this one leaves behind.
void ToolDesk::act(const LiveFunctionCall& call, ToolReply reply)
{
    const auto ticket = m_execution.begin(call.id);
    if (!ticket)
        return reply.fail(
            "An action is still running. Wait for its result and fresh screen before choosing the next step.");
    m_executingCall = call.id;
    auto shared = std::make_shared<ToolReply>(std::move(reply));
    m_ports.tools.run(call, ToolReply([self = std::weak_ptr(m_self), ticket = *ticket, shared](const Json& result) {
        if (const auto desk = self.lock()) {
            if ((*desk)->m_execution.isCurrent(ticket))
                (*desk)->m_executingCall.clear();
            (*desk)->m_execution.finish(ticket);
        }
        shared->answer(result);
    }));
}

// ---- A call is taken back

void ToolDesk::cancel(const std::vector<std::string>& ids)
{
    for (const std::string& id : ids) {
        if (id == m_executingCall)
            cancelAction();
        for (Running& call : m_running)
            if (call.key.second == id)
                call.isCancelled = true;
        m_ports.log.record("tool_call_cancelled", {{"id", id}});
    }
}

void ToolDesk::cancelAction()
{
    m_execution.cancel();
    m_executingCall.clear();
}

// ---- A call is answered

void ToolDesk::answered(const Key& key, const Json& result)
{
    const auto found =
        std::find_if(m_running.begin(), m_running.end(), [&](const Running& call) { return call.key == key; });
    if (found == m_running.end())
        return;
    Running call = std::move(*found);
    m_running.erase(found);
    if (m_running.empty())
        m_progressTimer.cancel();
    const LiveResponseScheduling scheduling = schedulingOf(call);
    tool_report::Answered answer{{std::move(call.call), result}, scheduling, key.first};
    m_ports.observer.toolAnswered({key.second, answer.answered.call.name, result});
    m_actionReplies.push_back(answer.answered);
    if (m_actionReplies.size() > keptReplies)
        m_actionReplies.pop_front();
    m_ports.report(std::move(answer));
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
