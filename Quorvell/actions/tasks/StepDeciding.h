// SPDX-License-Identifier: MIT
// Asking for the next step of a task without waiting for it.
#pragma once

#include "QuorvellCore/automation/decisions/DecisionContext.h"
#include "QuorvellCore/automation/engine/RoutedDecision.h"
#include "QuorvellCore/automation/engine/http/DecisionError.h"

#include <functional>
#include <stop_token>
#include <utility>
#include <variant>

namespace quorvell {

using StepAnswer = std::variant<RoutedDecision, DecisionError>;

/// Waits for the answer; returns soon after `stop` is asked for. Called on one worker at a time.
using StepDecider = std::function<StepAnswer(const DecisionContext&, std::stop_token)>;

/// The wish for an answer: without it, the decider is told to stop and nobody hears what it says.
class [[nodiscard]] StepWish {
public:
    StepWish() = default;
    explicit StepWish(std::function<void()> abandon)
        : m_abandon(std::move(abandon))
    {
    }
    ~StepWish() { abandon(); }
    StepWish(StepWish&& other) noexcept
        : m_abandon(std::exchange(other.m_abandon, nullptr))
    {
    }
    StepWish& operator=(StepWish&& other) noexcept
    {
        if (this != &other) {
            abandon();
            m_abandon = std::exchange(other.m_abandon, nullptr);
        }
        return *this;
    }
    void abandon()
    {
        if (auto abandon = std::exchange(m_abandon, nullptr))
            abandon();
    }

private:
    std::function<void()> m_abandon;
};

/// Main thread.
class StepDeciding {
public:
    virtual ~StepDeciding() = default;

    /// The answer comes later, on the main thread, at most once: never after it is abandoned.
    virtual StepWish ask(
        StepDecider decider, DecisionContext context, std::function<void(const StepAnswer&)> answer) = 0;
};

} // namespace quorvell
