// SPDX-License-Identifier: MIT
// The session's clock and timers as a port. The program's runs on its event loop; tests drive hours in milliseconds.
#pragma once

#include "QuorvellCore/text/Instant.h"

#include <chrono>
#include <functional>
#include <utility>

namespace quorvell {

/// Since an arbitrary start; counts the time that the computer sleeps.
using SessionTime = std::chrono::milliseconds;

/// Cancels its timer when it dies. Movable; an empty one cancels nothing.
class [[nodiscard]] TimerHandle {
public:
    TimerHandle() = default;
    explicit TimerHandle(std::function<void()> cancel)
        : m_cancel(std::move(cancel))
    {
    }
    ~TimerHandle() { cancel(); }
    TimerHandle(TimerHandle&& other) noexcept
        : m_cancel(std::exchange(other.m_cancel, nullptr))
    {
    }
    TimerHandle& operator=(TimerHandle&& other) noexcept
    {
        if (this != &other) {
            cancel();
            m_cancel = std::exchange(other.m_cancel, nullptr);
        }
        return *this;
    }

    bool isSet() const { return m_cancel != nullptr; }
    void cancel()
    {
        if (auto cancel = std::exchange(m_cancel, nullptr))
            cancel();
    }

private:
    std::function<void()> m_cancel;
};

/// Everything but `post` is used on the main thread only, and every callback runs there.
class Scheduler {
public:
    virtual ~Scheduler() = default;

    virtual SessionTime now() const = 0;
    virtual Instant wallClock() const = 0;
    /// Runs once after `delay`, never inside this call.
    [[nodiscard]] virtual TimerHandle after(std::chrono::milliseconds delay, std::function<void()> action) = 0;
    [[nodiscard]] virtual TimerHandle every(std::chrono::milliseconds period, std::function<void()> action) = 0;
    /// From any thread: runs soon on the main thread, in order.
    virtual void post(std::function<void()> action) = 0;
};

} // namespace quorvell
