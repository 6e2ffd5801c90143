// SPDX-License-Identifier: MIT
#include "LiveService/speech/WorkerThread.h"

#include <utility>

namespace quorvell {

WorkerThread::WorkerThread()
    : m_thread([this](std::stop_token stop) { work(stop); })
{
}

WorkerThread::~WorkerThread()
{
    m_thread.request_stop();
    m_thread.join();
}

void WorkerThread::post(std::function<void()> job)
{
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_changed.notify_one();
}

void WorkerThread::clear()
{
    std::deque<std::function<void()>> forgotten; // Destroyed outside the lock: a job may hold anything.
    const std::lock_guard lock(m_mutex);
    std::swap(forgotten, m_jobs);
}

void WorkerThread::work(const std::stop_token& stop)
{
    while (true) {
        std::function<void()> job;
        {
            std::unique_lock lock(m_mutex);
            if (!m_changed.wait(lock, stop, [this] { return !m_jobs.empty(); }))
                return; // Told to stop, and nothing is left to do.
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}

} // namespace quorvell
