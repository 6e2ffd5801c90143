// SPDX-License-Identifier: MIT
// Which of two hours an alarm means that was set without a half of the day. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <optional>
#include <vector>

namespace quorvell {

/// People set alarms in the morning far more often than in the evening, and say the half of the day where it is the
/// evening. So
/// - 5 to 11 is the morning, unless the evening one comes within the next four hours: then it is asked;
/// - 1 to 4 is the afternoon where that comes within twelve hours, since nobody sleeps then; said at night it may be
///   an early flight, and is asked.
/// 12 is noon for the reader of times already. What is taken is told with the other one, so that one word puts it
/// right.
struct AlarmHour {
    Instant taken{};
    std::optional<Instant> other{}; ///< What it could have been.

    /// Nothing where both are likely. `choices` are those of the reader of times, in order.
    static std::optional<AlarmHour> of(const std::vector<Instant>& choices, Instant now, const Calendar& calendar);
    /// Of an alarm that is moved: the same half of the day as before.
    static AlarmHour likeBefore(const std::vector<Instant>& choices, Instant before, const Calendar& calendar);

    bool operator==(const AlarmHour&) const = default;
};

} // namespace quorvell
