// SPDX-License-Identifier: MIT
// One thread that does jobs in order.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace quorvell {

/// Used from the thread that made it; jobs run on its own.
class WorkerThread {
public:
    WorkerThread();
    /// Waits until every job is done; clear first where they are not wanted.
    ~WorkerThread();

    void post(std::function<void()> job);
    /// Forgets the jobs that have not begun.
    void clear();

private:
    void work(const std::stop_token& stop);

    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<std::function<void()>> m_jobs; ///< Guarded by m_mutex.
    std::jthread m_thread; ///< Last: it uses all of the above.
};

} // namespace quorvell
