// SPDX-License-Identifier: MIT
// The one thread that reads, writes and flushes files, so that no other thread ever waits for a disk.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace quorvell {

/// Carries out jobs in the order in which they came and hands each result back. `run` may be called from any thread.
class FileWorker {
public:
    /// Hands a callback to the thread that asks for work; its event loop runs it soon, in order. Must be callable from
    /// the worker's thread for as long as the worker lives.
    using Post = std::function<void(std::function<void()>)>;

    explicit FileWorker(Post post);
    /// Finishes every job that was handed in; their results are still posted.
    ~FileWorker();
    FileWorker(const FileWorker&) = delete;
    FileWorker& operator=(const FileWorker&) = delete;

    /// `work` runs on the worker's thread and must capture values only. `done` receives what it returned, where posts
    /// go.
    template <typename Work, typename Done> void run(Work work, Done done)
    {
        submit([work = std::move(work), done = std::move(done)]() mutable -> std::function<void()> {
            return [result = work(), done = std::move(done)]() mutable { done(std::move(result)); };
        });
    }

private:
    using Job = std::function<std::function<void()>()>; ///< Returns what is to be posted.

    void submit(Job job);
    void work();

    Post m_post;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<Job> m_jobs; ///< Guarded by m_mutex.
    bool m_isEnding = false; ///< Guarded by m_mutex.
    std::thread m_thread;
};

} // namespace quorvell
