// SPDX-License-Identifier: MIT
// What readers of several days, or of hours of a day, hand on: from when to when, and how that is said.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SpokenStretch {
    DateParts from{}; ///< The first day, or a moment.
    DateParts to{}; ///< The last day, or a moment.
    std::string words{}; ///< For a reply.

    /// Reads the day beside hours: "tomorrow" of "tomorrow between 9 and 10".
    using DayReader = std::optional<SpokenStretch> (*)(std::string_view words, const LocalTime& around);

    bool operator==(const SpokenStretch&) const = default;
};

} // namespace quorvell
