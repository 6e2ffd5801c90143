// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/AgendaWorker.h"

#include <algorithm>
#include <iterator>

namespace quorvell {

AgendaWorker::AgendaWorker(Post post, Limits limits)
    : m_limits(limits)
{
    m_state->post = std::move(post);
    m_thread = std::thread([state = m_state, limits] { work(state, limits); });
}

AgendaWorker::~AgendaWorker()
{
    State& state = *m_state;
    std::deque<Job> dropped; // Their ends may call others, so they end without the lock.
    std::unique_lock lock(state.mutex);
    const auto hasEnded = [&state] { return state.hasEnded; };
    state.isEnding = true;
    for (Job& job : std::exchange(state.jobs, {}))
        (job.kind == Kind::reads ? dropped : state.jobs).push_back(std::move(job));
    if (state.runningKind == Kind::reads)
        state.running.request_stop();
    state.wake.notify_one();
    if (!state.ended.wait_for(lock, m_limits.end, hasEnded)) {
        std::move(state.jobs.begin(), state.jobs.end(), std::back_inserter(dropped));
        state.jobs.clear();
        state.running.request_stop();
        state.ended.wait_for(lock, m_limits.stop, hasEnded);
    }
    state.post = nullptr;
    const bool isOver = state.hasEnded;
    lock.unlock();
    if (isOver)
        m_thread.join();
    else
        m_thread.detach();
}

void AgendaWorker::submit(Job job)
{
    std::unique_lock lock(m_state->mutex);
    if (m_state->jobs.size() >= m_limits.mostWaiting) {
        lock.unlock();
        return deliver(*m_state, job.run(nullptr));
    }
    m_state->jobs.push_back(std::move(job));
    m_state->wake.notify_one();
}

void AgendaWorker::deliver(State& state, const std::function<void()>& result)
{
    const std::lock_guard guard(state.mutex);
    if (state.post)
        state.post(result);
}

void AgendaWorker::work(const std::shared_ptr<State>& state, Limits limits)
{
    std::unique_lock lock(state->mutex);
    while (true) {
        state->wake.wait(lock, [&state] { return state->isEnding || !state->jobs.empty(); });
        if (state->jobs.empty())
            break;
        {
            Job job = std::move(state->jobs.front());
            state->jobs.pop_front();
            const auto now = Patience::Clock::now();
            state->running = std::stop_source();
            state->runningKind = job.kind;
            const Patience patience{state->running.get_token(), now + limits.work};
            lock.unlock();
            deliver(*state, job.run(now <= job.latest ? &patience : nullptr));
        }
        lock.lock();
        state->runningKind = Kind::reads;
    }
    state->hasEnded = true;
    state->ended.notify_all();
}

} // namespace quorvell
