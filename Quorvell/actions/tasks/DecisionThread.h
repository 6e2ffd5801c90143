// SPDX-License-Identifier: MIT
// Deciders wait for services, so they are asked on a thread of their own.
#pragma once

#include "Quorvell/actions/tasks/StepDeciding.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <thread>

namespace quorvell {

/// Main thread. Questions are put one after the other; only values cross.
class DecisionThread final : public StepDeciding {
public:
    /// `post` runs something soon on the main thread; it is called from both threads.
    explicit DecisionThread(std::function<void(std::function<void()>)> post);
    /// Tells the decider that runs to stop, and waits until it has.
    ~DecisionThread() override;
    DecisionThread(const DecisionThread&) = delete;
    DecisionThread& operator=(const DecisionThread&) = delete;

    StepWish ask(StepDecider decider, DecisionContext context, std::function<void(const StepAnswer&)> answer) override;

private:
    struct Asked;
    struct Question;

    void run(const std::stop_token& stop);

    std::function<void(std::function<void()>)> m_post;
    std::mutex m_lock; ///< Of the next three.
    std::condition_variable_any m_news;
    std::deque<Question> m_questions; ///< Not begun, oldest first.
    std::stop_source m_running; ///< Of the question that is being answered.
    std::jthread m_thread; ///< The last member: uses the others.
};

} // namespace quorvell
