// SPDX-License-Identifier: MIT
// The right to work the screen for a whole task: taken from the gate, given back while the task waits, and limited in
// time.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "QuorvellCore/automation/ActionExecutionGate.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class WorkPermit {
public:
    /// How soon it is noticed that the right was taken away: the model may take its call back, and whoever silences the
    /// assistant stops what acts; both go to the gate and tell nobody else.
    static constexpr std::chrono::milliseconds watchPeriod{200};

    /// `lost` is called when the right was taken away, `timeIsUp` after this much of work.
    WorkPermit(Scheduler& scheduler, ActionExecutionGate& gate, std::chrono::milliseconds longestWork,
        std::function<void()> lost, std::function<void()> timeIsUp);
    ~WorkPermit();
    WorkPermit(const WorkPermit&) = delete;
    WorkPermit& operator=(const WorkPermit&) = delete;

    /// False while somebody else works.
    [[nodiscard]] bool take(const std::string& callID);
    void giveBack();
    /// The action that runs is told to stop.
    void stopAction();

private:
    void watch();

    Scheduler& m_scheduler;
    ActionExecutionGate& m_gate;
    std::chrono::milliseconds m_timeLeft;
    std::function<void()> m_lost;
    std::function<void()> m_timeIsUp;
    std::optional<ActionExecutionGate::Ticket> m_ticket; ///< While it works.
    SessionTime m_since{};
    TimerHandle m_deadline;
    TimerHandle m_watch;
};

} // namespace quorvell
