// SPDX-License-Identifier: MIT
// Tells in the status line what keeps an answer waiting: the call, the connection, or a long piece of work and its
// latest step.
#pragma once

#include "Quorvell/app/terminal/StatusLine.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

/// An answer that is being written shows there until all of it is. Main thread.
class WorkStatus : public SessionObserver {
public:
    /// A short wait needs no words.
    static constexpr std::chrono::milliseconds worthTelling{2'000};
    static constexpr std::chrono::milliseconds tick{1'000};

    /// Both are borrowed.
    WorkStatus(Scheduler& scheduler, StatusLine& line)
        : m_scheduler(scheduler)
        , m_line(line)
    {
    }

    void phaseChanged(SessionPhase phase) override;
    void linkChanged(Link link) override;
    void userSaid(const std::string& text, Words words) override;
    void thoughtChanged(const ThoughtSummary& thought) override;
    void toolCalled(const LiveFunctionCall& call) override;
    void toolAnswered(const LiveFunctionResponse& response) override;
    void assistantReplyGrew(const std::string& delta) override;
    void assistantSaid(const std::string& text) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    void workBegan();
    void workEnded();
    void tell();

    Scheduler& m_scheduler;
    StatusLine& m_line;
    std::optional<SessionTime> m_since; ///< While an answer is awaited.
    std::string m_step; ///< The tool that runs, else what is being thought about.
    std::string m_growing; ///< The end of the answer that is being written, on one line.
    bool m_isConnecting = false;
    bool m_isReconnecting = false;
    TimerHandle m_ticks;
};

} // namespace quorvell
