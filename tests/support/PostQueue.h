// SPDX-License-Identifier: MIT
// Stands in for an event loop: collects posts from any thread and runs them where the test asks for it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace quorvell::test {

class PostQueue {
public:
    std::function<void(std::function<void()>)> poster()
    {
        return [this](std::function<void()> action) {
            const std::lock_guard guard(m_mutex);
            m_actions.push_back(std::move(action));
            m_wake.notify_one();
        };
    }

    /// Runs posts until `isDone` holds. False when nothing was posted for ten seconds.
    template <typename Test> bool runUntil(const Test& isDone)
    {
        while (!isDone())
            if (!runOne())
                return false;
        return true;
    }

    /// Runs what has been posted so far.
    void runPosted()
    {
        std::unique_lock lock(m_mutex);
        std::deque<std::function<void()>> actions = std::exchange(m_actions, {});
        lock.unlock();
        for (const auto& action : actions)
            action();
    }

private:
    bool runOne()
    {
        std::unique_lock lock(m_mutex);
        if (!m_wake.wait_for(lock, std::chrono::seconds(10), [this] { return !m_actions.empty(); }))
            return false;
        const auto action = std::move(m_actions.front());
        m_actions.pop_front();
        lock.unlock();
        action();
        return true;
    }

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_actions;
};

} // namespace quorvell::test
