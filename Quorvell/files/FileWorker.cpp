// SPDX-License-Identifier: MIT
#include "Quorvell/files/FileWorker.h"

namespace quorvell {

FileWorker::FileWorker(Post post)
    : m_post(std::move(post))
    , m_thread([this] { work(); })
{
}

FileWorker::~FileWorker()
{
    {
        const std::lock_guard guard(m_mutex);
        m_isEnding = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void FileWorker::submit(Job job)
{
    {
        const std::lock_guard guard(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void FileWorker::work()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_wake.wait(lock, [this] { return m_isEnding || !m_jobs.empty(); });
        if (m_jobs.empty())
            return;
        {
            const Job job = std::move(m_jobs.front());
            m_jobs.pop_front();
            lock.unlock();
            m_post(job());
        }
        lock.lock();
    }
}

} // namespace quorvell
