// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/DecisionThread.h"

#include <optional>
#include <utility>

namespace quorvell {

/// What whoever asked wants to do with the answer. Main thread: it goes from there to the worker and back unread.
struct DecisionThread::Asked {
    std::stop_source stop;
    std::function<void(const StepAnswer&)> answer; ///< Empty once it is abandoned.
};

struct DecisionThread::Question {
    StepDecider decider;
    DecisionContext context;
    std::shared_ptr<Asked> asked;
};

DecisionThread::DecisionThread(std::function<void(std::function<void()>)> post)
    : m_post(std::move(post))
    , m_thread([this](const std::stop_token& stop) { run(stop); })
{
}

DecisionThread::~DecisionThread()
{
    m_thread.request_stop();
    {
        const std::lock_guard guard(m_lock);
        m_running.request_stop();
    }
    m_thread.join();
}

StepWish DecisionThread::ask(
    StepDecider decider, DecisionContext context, std::function<void(const StepAnswer&)> answer)
{
    auto asked = std::make_shared<Asked>();
    asked->answer = std::move(answer);
    StepWish wish([asked] {
        asked->answer = nullptr;
        asked->stop.request_stop();
    });
    {
        const std::lock_guard guard(m_lock);
        m_questions.push_back({std::move(decider), std::move(context), std::move(asked)});
    }
    m_news.notify_one();
    return wish;
}

/// Worker.
void DecisionThread::run(const std::stop_token& stop)
{
    while (true) {
        std::unique_lock lock(m_lock);
        m_news.wait(lock, stop, [this] { return !m_questions.empty(); });
        if (stop.stop_requested())
            return;
        Question question = std::move(m_questions.front());
        m_questions.pop_front();
        m_running = question.asked->stop;
        lock.unlock();

        const std::stop_token abandoned = question.asked->stop.get_token();
        StepAnswer answer = DecisionError{DecisionError::Kind::cancelled, 0, "It was not asked any more."};
        if (!abandoned.stop_requested())
            answer = question.decider(question.context, abandoned);
        // The last hold on what belongs to the main thread goes there with the answer.
        m_post([asked = std::move(question.asked), answer = std::move(answer)] {
            if (const auto take = std::exchange(asked->answer, nullptr))
                take(answer);
        });
    }
}

} // namespace quorvell
