// SPDX-License-Identifier: MIT
// From when to when an event is, taken out of the words about it. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventSpan {
    static const std::string monthName; ///< A pattern: "december".

    DateParts first{}; ///< Whole days.
    DateParts last{};

    /// "From friday to sunday", "the 10th to the 14th of december". The last day is the next of that name behind the
    /// first.
    static std::optional<EventSpan> takeDays(std::string& words, const LocalTime& around);
    /// "from 2 to 4 pm", "between 2 and 4 pm": becomes "at 2 pm", and the end apart.
    static std::string takeEnd(std::string& words);
    /// The time of `end` on the day of `start`, or in the night behind it; nothing when it would lie far from it.
    static std::optional<DateParts> endOn(const DateParts& start, const std::string& endWords, const LocalTime& around);
    static std::optional<DateParts> dayIn(const std::string& words, const LocalTime& around);
};

} // namespace quorvell
