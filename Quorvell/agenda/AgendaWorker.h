// SPDX-License-Identifier: MIT
// The thread on which calendars are asked. Whatever they hold, and however long a disk or another program takes, each
// question is answered or refused, and the end is not waited for without a limit.
#pragma once

#include "Quorvell/agenda/Patience.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>
#include <utility>

namespace quorvell {

/// Carries out jobs in the order in which they came and hands each result back. `run` may be called from any thread.
class AgendaWorker {
public:
    /// As of FileWorker. Not called any more once the worker has ended.
    using Post = std::function<void(std::function<void()>)>;

    /// The defaults are what a user meets; tests shorten them.
    struct Limits {
        std::chrono::milliseconds work{8'000}; ///< After it a job is asked to come to an end.
        std::chrono::milliseconds wait{8'000}; ///< A job that could not begin for so long is refused.
        std::chrono::milliseconds end{1'000}; ///< At the end: for changes that were asked for.
        std::chrono::milliseconds stop{300}; ///< Then: for a job that was told to stop.
        std::size_t mostWaiting = 32;
    };

    enum class Kind {
        reads, ///< Nobody misses it at the end.
        changes, ///< Carried out before the end where that is possible in time.
    };

    AgendaWorker(Post post, Limits limits);
    /// Takes at most Limits::end and Limits::stop. A job that does not stop is left to itself: with all that it holds,
    /// and without anybody who hears of its result.
    ~AgendaWorker();
    AgendaWorker(const AgendaWorker&) = delete;
    AgendaWorker& operator=(const AgendaWorker&) = delete;

    /// `work` runs on the worker's thread, takes a Patience and must capture values only. `refused` makes the result of
    /// a job that cannot even begin. `done` receives the result, where posts go.
    template <typename Work, typename Refused, typename Done> void run(Kind kind, Work work, Refused refused, Done done)
    {
        submit({kind, Patience::Clock::now() + m_limits.wait,
            [work = std::move(work), refused = std::move(refused), done = std::move(done)](
                const Patience* patience) mutable -> std::function<void()> {
                return [result = patience ? work(*patience) : refused(), done = std::move(done)]() mutable {
                    done(std::move(result));
                };
            }});
    }

private:
    struct Job {
        Kind kind = Kind::reads;
        Patience::Clock::time_point latest{}; ///< When it has to have begun.
        std::function<std::function<void()>(const Patience*)> run; ///< Null: it is refused.
    };
    /// What the thread and the worker share; the thread may be the last to need it.
    struct State {
        std::mutex mutex;
        std::condition_variable wake;
        std::condition_variable ended;
        // All guarded by the mutex
        Post post;
        std::deque<Job> jobs;
        std::stop_source running{std::nostopstate}; ///< Of the job that runs.
        Kind runningKind = Kind::reads;
        bool isEnding = false;
        bool hasEnded = false;
    };

    void submit(Job job);
    static void work(const std::shared_ptr<State>& state, Limits limits);
    static void deliver(State& state, const std::function<void()>& result);

    Limits m_limits;
    std::shared_ptr<State> m_state = std::make_shared<State>();
    std::thread m_thread;
};

} // namespace quorvell
