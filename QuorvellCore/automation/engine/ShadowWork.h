// SPDX-License-Identifier: MIT
// Comparisons that run beside a task and that nobody waits for.
#pragma once

#include <cstddef>
#include <functional>
#include <list>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <unordered_map>

namespace quorvell {

/// Any thread, but for those of its own jobs. Each job has a thread that ends when the job returns; whoever is told to
/// stop returns soon.
class ShadowWork {
public:
    using Job = std::function<void(std::stop_token)>;
    static constexpr std::size_t mostJobs = 4; ///< At once, those that are still ending included.

    /// `freshID` gives a new UUID's text each time; it is called by one thread at a time.
    explicit ShadowWork(std::function<std::string()> freshID);
    /// Tells all jobs to stop and waits for their ends.
    ~ShadowWork();
    ShadowWork(const ShadowWork&) = delete;
    ShadowWork& operator=(const ShadowWork&) = delete;

    /// False, and nothing is done, while there are as many as there may be.
    bool submit(Job job);
    /// Tells all jobs to stop and forgets them; waits for none.
    void cancel();
    std::size_t jobCount() const; ///< Submitted, not ended and not forgotten.

private:
    void end(const std::string& id);

    std::function<std::string()> m_freshID;
    mutable std::mutex m_lock;
    std::unordered_map<std::string, std::jthread> m_jobs;
    std::list<std::jthread> m_forgotten; ///< Told to stop, perhaps not yet ended.
    std::list<std::jthread> m_ended; ///< To be joined, which then takes no time.
};

} // namespace quorvell
