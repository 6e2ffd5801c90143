// SPDX-License-Identifier: MIT
// Where no line can change in place: says once a turn that its answer takes long, and what the model is at.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <chrono>
#include <functional>
#include <string>
#include <utility>

namespace quorvell {

/// Main thread.
class WorkNote : public SessionObserver {
public:
    /// Without a word of the answer. Shorter waits are usual, and a note would stay behind them.
    static constexpr std::chrono::milliseconds patience{8'000};

    using Tell = std::function<void(const std::string& note)>;

    /// The scheduler is borrowed.
    WorkNote(Scheduler& scheduler, Tell tell)
        : m_scheduler(scheduler)
        , m_tell(std::move(tell))
    {
    }

    void userSaid(const std::string& text, Words words) override;
    void thoughtChanged(const ThoughtSummary& thought) override;
    void toolCalled(const LiveFunctionCall& call) override;
    void assistantWordsHeard(const std::string& delta) override;
    void assistantSaid(const std::string& text) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    Scheduler& m_scheduler;
    Tell m_tell;
    std::string m_step; ///< The newest tool or thought of the turn.
    TimerHandle m_wait; ///< Set while no word has come.
};

} // namespace quorvell
