// SPDX-License-Identifier: MIT
// Real threads may post to it; the wall clock stands still and every delay is over at once.
#pragma once

#include "PostQueue.h"
#include "Quorvell/loop/Scheduler.h"

#include <memory>

namespace quorvell::test {

class PostScheduler final : public Scheduler {
public:
    explicit PostScheduler(Instant wallClock)
        : m_wallClock(wallClock)
    {
    }

    SessionTime now() const override { return {}; }
    Instant wallClock() const override { return m_wallClock; }
    TimerHandle after(std::chrono::milliseconds, std::function<void()> action) override
    {
        const auto isSet = std::make_shared<bool>(true);
        post([isSet, action = std::move(action)] {
            if (*isSet)
                action();
        });
        return TimerHandle([isSet] { *isSet = false; });
    }
    TimerHandle every(std::chrono::milliseconds, std::function<void()>) override { return {}; }
    void post(std::function<void()> action) override { queue.poster()(std::move(action)); }

    PostQueue queue;

private:
    Instant m_wallClock;
};

} // namespace quorvell::test
