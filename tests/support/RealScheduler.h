// SPDX-License-Identifier: MIT
// A main thread with a real clock and no Qt: what is due runs where the test waits.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <utility>

namespace quorvell::test {

class RealScheduler : public Scheduler {
public:
    using Clock = std::chrono::steady_clock;

    SessionTime now() const override
    {
        return std::chrono::duration_cast<SessionTime>(Clock::now().time_since_epoch());
    }
    Instant wallClock() const override
    {
        return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    }
    [[nodiscard]] TimerHandle after(std::chrono::milliseconds delay, std::function<void()> action) override
    {
        return cancelling(add(delay, {}, std::move(action)));
    }
    [[nodiscard]] TimerHandle every(std::chrono::milliseconds period, std::function<void()> action) override
    {
        return cancelling(add(period, period, std::move(action)));
    }
    void post(std::function<void()> action) override { add({}, {}, std::move(action)); }

    /// True as soon as `isDone` holds, false when it did not within the limit.
    template <typename Test>
    bool runUntil(const Test& isDone, std::chrono::milliseconds limit = std::chrono::seconds(5))
    {
        const auto end = Clock::now() + limit;
        // What a test waits for need not be a post, so it is looked at now and then.
        while (!isDone() && Clock::now() < end)
            run(std::chrono::milliseconds(2));
        return isDone();
    }
    void run(std::chrono::milliseconds duration)
    {
        const auto end = Clock::now() + duration;
        std::unique_lock lock(m_mutex);
        while (Clock::now() < end) {
            const auto due = m_timers.empty() ? end : m_timers.begin()->first.first;
            if (due <= Clock::now())
                runFirst(lock);
            else
                m_wake.wait_until(lock, std::min(due, end));
        }
    }

private:
    using Key = std::pair<Clock::time_point, std::uint64_t>;
    struct Timer {
        std::function<void()> action;
        std::chrono::milliseconds period;
    };

    std::uint64_t add(std::chrono::milliseconds delay, std::chrono::milliseconds period, std::function<void()> action)
    {
        const std::lock_guard lock(m_mutex);
        const std::uint64_t id = ++m_count;
        m_timers.emplace(Key{Clock::now() + delay, id}, Timer{std::move(action), period});
        m_wake.notify_one();
        return id;
    }
    TimerHandle cancelling(std::uint64_t id)
    {
        return TimerHandle([this, id] {
            const std::lock_guard lock(m_mutex);
            std::erase_if(m_timers, [id](const auto& timer) { return timer.first.second == id; });
        });
    }
    void runFirst(std::unique_lock<std::mutex>& lock)
    {
        const auto [key, timer] = *m_timers.begin();
        m_timers.erase(m_timers.begin());
        if (timer.period.count() > 0)
            m_timers.emplace(Key{key.first + timer.period, key.second}, timer);
        lock.unlock();
        timer.action();
        lock.lock();
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::uint64_t m_count = 0;
    std::map<Key, Timer> m_timers;
};

} // namespace quorvell::test
