// SPDX-License-Identifier: MIT
// Where the model's tool calls come in: refuses what may not run, keeps the plan, lets one action run at a time, and
// sees that each call is answered exactly once, in time, and that no model calls without end.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/AnsweredCall.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/settings/SessionLimits.h"
#include "Quorvell/session/tools/CallAllowance.h"
#include "Quorvell/session/tools/ToolDispatcher.h"
#include "Quorvell/session/tools/ToolReport.h"
#include "QuorvellCore/automation/ActionExecutionGate.h"
#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class ToolDesk {
public:
    enum class Conversation { live, none };

    struct Ports {
        Scheduler& scheduler;
        const ToolDispatcher& tools;
        EventLog& log;
        SessionAudience& observer;
        std::function<void(ToolReport)> report;
        ActionWatch& watch = ActionWatch::nobody();
    };

    ToolDesk(Ports ports, SessionLimits limits);
    ToolDesk(const ToolDesk&) = delete;
    ToolDesk& operator=(const ToolDesk&) = delete;

    /// How often the user has asked for something: a new request may lead to new calls.
    void noteRequests(std::uint64_t count);
    /// Calls of the model that came over the line `askedBy`. One that is reported twice is run once.
    void handle(const std::vector<LiveFunctionCall>& calls, std::uint64_t askedBy);
    /// Whether one of these was not reported before.
    bool isNews(const std::vector<LiveFunctionCall>& calls, std::uint64_t askedBy) const;
    /// Carries out one call; `reply` is answered exactly once, now or later.
    void run(const LiveFunctionCall& call, ToolReply reply, Conversation conversation);
    /// The model takes calls back. An action among them is told to stop; what a tool answers is still passed on.
    void cancel(const std::vector<std::string>& ids);
    /// The user stops whatever runs.
    void cancelAction();
    /// A new conversation: the plan and what was answered are forgotten; calls that still run are not.
    void begin();

    bool isActing() const { return m_execution.current().has_value(); }
    bool isWorking() const { return !m_running.empty(); }
    std::vector<LiveFunctionCall> runningCalls() const;
    /// Answered since the last `forgetReplies`, oldest first.
    const std::deque<AnsweredCall>& actionReplies() const { return m_actionReplies; }
    void forgetReplies() { m_actionReplies.clear(); }

    const TaskPlan& plan() const { return m_plan; }
    /// The task is finished.
    void endPlan();
    const Json& nextStep() const { return m_nextStep; }
    /// Checked between their sub-steps by the tools that act.
    ActionExecutionGate& execution() { return m_execution; }

private:
    static constexpr std::size_t rememberedCalls = 256; ///< Against a call that is reported twice.
    static constexpr std::size_t mostRunning = 32;
    static constexpr std::size_t mostOverdue = 32;
    static constexpr std::size_t keptReplies = 16;

    using Key = std::pair<std::uint64_t, std::string>; ///< Line and call id; services begin to count again.
    struct Running {
        Key key;
        LiveFunctionCall call;
        bool isCancelled = false;
        TimerHandle deadline{};
    };

    bool isSeen(const Key& key) const;
    void remember(const Key& key);
    void runFor(const LiveFunctionCall& call, std::uint64_t askedBy);
    /// Whether the call may run; where not, the reply is answered.
    bool isAllowed(const LiveFunctionCall& call, ToolReply& reply);
    void overdue(Key key);
    void answered(const Key& key, const Json& result);
    void answeredLate(const Key& key, const Json& result);
    void pass(Running call, const Json& result, tool_report::Answered::Time time);
    void takePlan(const LiveFunctionCall& call);
    void updatePlan(const Json& changes);
    bool isActing(const std::string& callID) const;
    void act(const LiveFunctionCall& call, ToolReply reply);
    std::chrono::milliseconds longest(const LiveFunctionCall& call) const;
    static LiveResponseScheduling schedulingOf(const Running& call);

    Ports m_ports;
    SessionLimits m_limits;
    std::deque<Key> m_seen; ///< Newest last.
    std::vector<Running> m_running;
    std::deque<Running> m_overdue; ///< Told to have not answered; oldest first.
    CallAllowance m_allowance;
    std::uint64_t m_requests = 0;
    bool m_isStopTold = false; ///< To the user, since they asked last.
    std::deque<AnsweredCall> m_actionReplies;
    TaskPlan m_plan;
    Json m_nextStep; ///< The step after the one that runs, as the model announced it; null without one.
    ActionExecutionGate m_execution; ///< Knows what acts, whether a call of this desk or a task that goes on by itself.
    TimerHandle m_progressTimer;
    std::shared_ptr<ToolDesk*> m_self; ///< Tools may answer when the desk is long gone.
};

} // namespace quorvell
