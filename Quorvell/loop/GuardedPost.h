// SPDX-License-Identifier: MIT
// Brings facts from other threads to the main thread for as long as its owner lives; whatever calls it must have ended
// before the owner does.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <functional>
#include <memory>
#include <utility>

namespace quorvell {

/// Made and destroyed on the main thread, called on any.
class GuardedPost {
public:
    explicit GuardedPost(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }

    void operator()(std::function<void()> action) const
    {
        m_scheduler.post([guard = m_guard, action = std::move(action)] {
            if (!guard.expired())
                action();
        });
    }

private:
    Scheduler& m_scheduler;
    const std::shared_ptr<int> m_life = std::make_shared<int>();
    const std::weak_ptr<int> m_guard = m_life; ///< What other threads copy.
};

} // namespace quorvell
