// SPDX-License-Identifier: MIT
// The kernel's alarm on the wall clock: rings right after the computer wakes up where its moment passed in the sleep,
// and tells when the clock was set.
#pragma once

#include "Quorvell/reminding/WallClockTimer.h"

#include <QSocketNotifier>

#include <memory>

namespace quorvell {

/// Needs an event loop.
class TimerFdWallClock final : public WallClockTimer {
public:
    TimerFdWallClock();
    ~TimerFdWallClock() override;
    TimerFdWallClock(const TimerFdWallClock&) = delete;
    TimerFdWallClock& operator=(const TimerFdWallClock&) = delete;

    Instant now() const override;
    void setAlarm(std::optional<Instant> moment) override;
    void onRing(std::function<void()> rang) override;

private:
    void ring();

    int m_timer = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::function<void()> m_rang;
};

} // namespace quorvell
