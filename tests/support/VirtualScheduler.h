// SPDX-License-Identifier: MIT
// A clock that stands still until a test moves it: hours pass in milliseconds, and always in the same order.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

namespace quorvell {

class VirtualScheduler : public Scheduler {
public:
    SessionTime now() const override { return m_now; }
    Instant wallClock() const override { return wallClockAtStart + m_now; }

    [[nodiscard]] TimerHandle after(std::chrono::milliseconds delay, std::function<void()> action) override
    {
        return add(delay, std::chrono::milliseconds::zero(), std::move(action));
    }
    [[nodiscard]] TimerHandle every(std::chrono::milliseconds period, std::function<void()> action) override
    {
        return add(period, period, std::move(action));
    }
    void post(std::function<void()> action) override
    {
        m_timers.emplace(Key{m_now, ++m_count}, Timer{std::move(action), {}});
    }

    /// Runs what is due, moving the clock to each timer's moment, and stops `duration` later.
    void advance(std::chrono::milliseconds duration)
    {
        const SessionTime end = m_now + duration;
        while (!m_timers.empty() && m_timers.begin()->first.first <= end)
            runFirst();
        m_now = end;
    }
    /// The computer sleeps: the clock goes on, timers do not.
    void sleep(std::chrono::milliseconds duration)
    {
        std::map<Key, Timer> later;
        for (auto& [key, timer] : m_timers)
            later.emplace(Key{key.first + duration, key.second}, std::move(timer));
        m_timers = std::move(later);
        m_now += duration;
    }
    /// Runs what is due now.
    void settle() { advance(std::chrono::milliseconds::zero()); }

    std::size_t pendingTimers() const { return m_timers.size(); }

    Instant wallClockAtStart{std::chrono::milliseconds(1'795'255'200'000)}; ///< 2026-11-21 10:00 UTC

private:
    using Key = std::pair<SessionTime, std::uint64_t>; ///< When, and which of several at that moment.
    struct Timer {
        std::function<void()> action;
        std::chrono::milliseconds period;
    };

    TimerHandle add(std::chrono::milliseconds delay, std::chrono::milliseconds period, std::function<void()> action)
    {
        const std::uint64_t id = ++m_count;
        m_timers.emplace(
            Key{m_now + std::max(delay, std::chrono::milliseconds::zero()), id}, Timer{std::move(action), period});
        return TimerHandle(
            [this, id] { std::erase_if(m_timers, [id](const auto& t) { return t.first.second == id; }); });
    }

    void runFirst()
    {
        const auto [key, timer] = *m_timers.begin();
        m_timers.erase(m_timers.begin());
        m_now = std::max(m_now, key.first);
        if (timer.period > std::chrono::milliseconds::zero())
            m_timers.emplace(Key{m_now + timer.period, key.second}, timer);
        timer.action();
    }

    SessionTime m_now{};
    std::uint64_t m_count = 0;
    std::map<Key, Timer> m_timers;
};

} // namespace quorvell
