// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/ShadowWork.h"

#include <algorithm>
#include <utility>

namespace quorvell {

ShadowWork::ShadowWork(std::function<std::string()> freshID)
    : m_freshID(std::move(freshID))
{
}

ShadowWork::~ShadowWork()
{
    cancel();
    std::list<std::jthread> last;
    {
        const std::lock_guard guard(m_lock);
        last.swap(m_forgotten);
    }
    // Joined here, outside the lock, which each of them takes at its end; those that have ended with the members.
}

bool ShadowWork::submit(Job job)
{
    std::list<std::jthread> ended; // joined outside the lock
    const std::lock_guard guard(m_lock);
    ended.swap(m_ended);
    const std::string id = m_freshID ? m_freshID() : "";
    if (id.empty() || m_jobs.size() + m_forgotten.size() >= mostJobs || m_jobs.contains(id))
        return false;
    // It cannot end before it stands in the table: its end takes the lock.
    m_jobs.emplace(id, std::jthread([this, id, job = std::move(job)](std::stop_token stop) {
        job(std::move(stop));
        end(id);
    }));
    return true;
}

/// On the thread of the job, whose place it leaves to the next one.
void ShadowWork::end(const std::string& id)
{
    const std::lock_guard guard(m_lock);
    if (const auto job = m_jobs.find(id); job != m_jobs.end()) {
        m_ended.push_back(std::move(job->second));
        m_jobs.erase(job);
        return;
    }
    const auto own = std::find_if(m_forgotten.begin(), m_forgotten.end(),
        [](const std::jthread& thread) { return thread.get_id() == std::this_thread::get_id(); });
    if (own != m_forgotten.end())
        m_ended.splice(m_ended.end(), m_forgotten, own);
}

void ShadowWork::cancel()
{
    const std::lock_guard guard(m_lock);
    for (auto& [id, thread] : m_jobs) {
        thread.request_stop();
        m_forgotten.push_back(std::move(thread));
    }
    m_jobs.clear();
}

std::size_t ShadowWork::jobCount() const
{
    const std::lock_guard guard(m_lock);
    return m_jobs.size();
}

} // namespace quorvell
