// SPDX-License-Identifier: MIT
// Where something goes that stands at a time already, by words that say only what changes. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <string_view>
#include <vector>

namespace quorvell {

/// A day or a time of day that the words leave out stays as it was. An hour without a half of the day is that near the
/// old one: 6 PM becomes 7 PM.
struct SpokenMove {
    /// What an hour means that lies near the old one neither in the morning nor in the evening.
    enum class FarHour {
        isAsked,
        isUsual, ///< Between 8 in the morning and 8 in the evening.
    };

    std::vector<DateParts> choices{}; ///< One is settled; of several the user has to choose.

    /// Without choices where the words name no time.
    static SpokenMove read(std::string_view words, const DateParts& old, FarHour farHour, const LocalTime& around);

    /// Whether the words name the day or the time of day that it stands at.
    static bool isAt(std::string_view words, const DateParts& old, const LocalTime& around);

    bool operator==(const SpokenMove&) const = default;
};

} // namespace quorvell
