// SPDX-License-Identifier: MIT
// What makes a reminder ring: an alarm, or a timer that counts down.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/text/Instant.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// It stands in the note's `then`, which says what follows once its time has come, in the form of `stored`. Every
/// program that reads note files keeps that header, and one that knows nothing of alarms still reminds at the time.
/// A timer that is paused has no time, so that nothing reminds of it; what was left of it stands here.
struct AlarmMark {
    enum class Kind { alarm, timer };

    static constexpr std::chrono::seconds longestTimer = std::chrono::hours(24 * 7);

    Kind kind = Kind::alarm;
    std::chrono::seconds length{0}; ///< Of a timer, as it was set.
    std::optional<std::chrono::seconds> left{}; ///< Of a timer that is paused.
    /// Of an alarm that repeats: it rings once more then, and keeps its own times.
    std::optional<Instant> snoozedUntil{};

    /// Nothing for a note that does not ring, and for a text that this program would not have written.
    static std::optional<AlarmMark> of(const Note& note);
    /// "ring", "ring snoozed 2026-11-22T06:54:00.000Z", "ring timer 600" or "ring timer 600 paused 95".
    static std::optional<AlarmMark> fromStored(std::string_view text);
    std::string stored() const;

    bool isTimer() const { return kind == Kind::timer; }
    bool isPaused() const { return left.has_value(); }

    bool operator==(const AlarmMark&) const = default;
};

} // namespace quorvell
