// SPDX-License-Identifier: MIT
// Decides when a turn is over. Some services never say so: it shows only in that nothing more comes.
#pragma once

#include "Quorvell/loop/Scheduler.h"

#include <chrono>
#include <optional>

namespace quorvell {

/// One turn: the user asked for something, and the assistant answers it, now or after tools have run.
struct TurnTracker {
    /// Without output, after all sound that was received has been played.
    static constexpr std::chrono::milliseconds settleTime{700};

    bool isOpen = false;
    bool isBackendWorking = false; ///< Tools or the model behind the voice are at it.
    bool isAnswered = false; ///< Something was said or shown.
    bool isDeclaredOver = false; ///< The service said so itself, after the answer.
    SessionTime outputUntil{}; ///< When the last output ends.

    /// The user asked for something new.
    void requested();
    /// More of what the user says. It opens a turn but takes no answer back: words may be reported late.
    void heard();
    void backendStarted();
    void backendFinished();
    /// Something was said or shown that ends (sounds, for a voice) at `until`.
    void answered(SessionTime until);
    /// The service says that the turn is over. Without an answer that is the end of an earlier turn.
    void serviceFinished();
    void close();

    /// When the turn is complete if nothing more comes. Nothing while there is no turn or its answer is awaited.
    std::optional<SessionTime> completeAt() const;

    bool operator==(const TurnTracker&) const = default;
};

} // namespace quorvell
