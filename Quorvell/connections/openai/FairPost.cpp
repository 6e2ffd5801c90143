// SPDX-License-Identifier: MIT
#include "Quorvell/connections/openai/FairPost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMetaObject>

#include <deque>
#include <memory>
#include <mutex>
#include <utility>

namespace quorvell {

namespace {

struct Queue {
    std::mutex mutex;
    std::deque<std::function<void()>> actions; ///< Guarded, as what follows.
    bool isAwaited = false; ///< The main thread will come to look.
};

void lookLater(const std::shared_ptr<Queue>& queue);

/// Null when nothing is left; then the next one that comes calls again.
std::function<void()> next(Queue& queue)
{
    const std::lock_guard guard(queue.mutex);
    if (queue.actions.empty()) {
        queue.isAwaited = false;
        return nullptr;
    }
    auto action = std::move(queue.actions.front());
    queue.actions.pop_front();
    return action;
}

void work(const std::shared_ptr<Queue>& queue)
{
    QElapsedTimer time;
    time.start();
    while (!time.hasExpired(FairPost::share.count())) {
        const auto action = next(*queue);
        if (!action)
            return;
        action();
    }
    lookLater(queue);
}

/// The library does no more in a turn than was posted when it began.
void lookLater(const std::shared_ptr<Queue>& queue)
{
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [queue] { work(queue); }, Qt::QueuedConnection);
}

} // namespace

std::function<void(std::function<void()>)> FairPost::make()
{
    return [queue = std::make_shared<Queue>()](std::function<void()> action) {
        {
            const std::lock_guard guard(queue->mutex);
            queue->actions.push_back(std::move(action));
            if (std::exchange(queue->isAwaited, true))
                return;
        }
        lookLater(queue);
    };
}

} // namespace quorvell
