// SPDX-License-Identifier: MIT
// A practice world as the screen of a typed conversation.
#pragma once

#include "Quorvell/practice/screen/PracticeScreen.h"
#include "Quorvell/practice/world/PracticeWorld.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; the scheduler is borrowed.
class ChatPractice final : public SessionObserver {
public:
    /// What the screen shows is told at the beginning and after each turn.
    ChatPractice(PracticeDescription world, Scheduler& scheduler, std::function<void(const std::string&)> tell);

    Screen& screen() { return m_screen; }
    std::vector<std::string> applications() const;
    void show();

    void turnCompleted(TurnOutcome) override { show(); }

private:
    Scheduler& m_scheduler;
    SessionTime m_begun;
    PracticeWorld m_world;
    PracticeScreen m_screen;
    std::size_t m_told = 0; ///< Consequences so far.
    std::function<void(const std::string&)> m_tell;
};

} // namespace quorvell
