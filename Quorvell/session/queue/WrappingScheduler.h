// SPDX-License-Identifier: MIT
// A clock whose timers run inside something that their owner puts around them.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <functional>
#include <utility>

namespace quorvell {

/// Main thread; the scheduler is borrowed. Outlives the timers that it gave out.
class WrappingScheduler final : public Scheduler {
public:
    using Action = std::function<void()>;
    using Wrap = std::function<void(const Action& action)>;

    WrappingScheduler(Scheduler& scheduler, Wrap wrap)
        : m_scheduler(scheduler)
        , m_wrap(std::move(wrap))
    {
    }

    SessionTime now() const override { return m_scheduler.now(); }
    Instant wallClock() const override { return m_scheduler.wallClock(); }
    [[nodiscard]] TimerHandle after(std::chrono::milliseconds delay, Action action) override
    {
        return m_scheduler.after(delay, wrapped(std::move(action)));
    }
    [[nodiscard]] TimerHandle every(std::chrono::milliseconds period, Action action) override
    {
        return m_scheduler.every(period, wrapped(std::move(action)));
    }
    /// Cannot be cancelled, and so may outlive whatever would be around it: nothing is.
    void post(Action action) override { m_scheduler.post(std::move(action)); }

private:
    Action wrapped(Action action) const
    {
        return [wrap = m_wrap, action = std::move(action)] { wrap(action); };
    }

    Scheduler& m_scheduler;
    Wrap m_wrap;
};

} // namespace quorvell
