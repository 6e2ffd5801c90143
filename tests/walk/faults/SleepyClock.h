// SPDX-License-Identifier: MIT
// The clock of a computer that can be put to sleep: afterwards more time has gone by than timers know of.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <utility>

namespace quorvell::walk {

class SleepyClock : public Scheduler {
public:
    explicit SleepyClock(Scheduler& clock)
        : m_clock(clock)
    {
    }

    void sleep(std::chrono::milliseconds time) { m_slept += time; }

    SessionTime now() const override { return m_clock.now() + m_slept; }
    Instant wallClock() const override { return m_clock.wallClock() + m_slept; }
    [[nodiscard]] TimerHandle after(std::chrono::milliseconds delay, std::function<void()> action) override
    {
        return m_clock.after(delay, std::move(action));
    }
    [[nodiscard]] TimerHandle every(std::chrono::milliseconds period, std::function<void()> action) override
    {
        return m_clock.every(period, std::move(action));
    }
    void post(std::function<void()> action) override { m_clock.post(std::move(action)); }

private:
    Scheduler& m_clock;
    std::chrono::milliseconds m_slept{};
};

} // namespace quorvell::walk
