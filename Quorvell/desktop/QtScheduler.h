// SPDX-License-Identifier: MIT
// The program's clock and timers, on the Qt event loop.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <memory>

class QObject;

namespace quorvell {

/// Lives on the thread that made it, which must run a Qt event loop. Timers that are still set when it dies, and
/// actions posted but not yet run, never run.
class QtScheduler : public Scheduler {
public:
    QtScheduler();
    ~QtScheduler() override;

    /// CLOCK_BOOTTIME, so that a night's sleep of the computer counts as elapsed.
    SessionTime now() const override;
    Instant wallClock() const override;
    [[nodiscard]] TimerHandle after(std::chrono::milliseconds delay, std::function<void()> action) override;
    [[nodiscard]] TimerHandle every(std::chrono::milliseconds period, std::function<void()> action) override;
    void post(std::function<void()> action) override;

private:
    enum class Repeat { no, yes };
    TimerHandle startTimer(std::chrono::milliseconds interval, Repeat repeat, std::function<void()> action);

    std::unique_ptr<QObject> m_context; ///< Owns the timers and receives what is posted.
};

} // namespace quorvell
