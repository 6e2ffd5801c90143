// SPDX-License-Identifier: MIT
// Days and stretches of time as people name them, and where they are. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// A stretch of days or hours.
struct SpokenDays {
    DateParts from{}; ///< The first day, or a moment.
    DateParts to{}; ///< The last day, or a moment.
    std::string words{}; ///< For a reply: "tomorrow", "on Friday", "this week".

    /// Nothing when the words are no day: "tomorrow", "on friday afternoon", "this week", "the 5th of december".
    static std::optional<SpokenDays> read(std::string_view words, const LocalTime& around);
    /// The same for the longest stretch of the words that is one. `others` are those around it.
    static std::optional<SpokenDays> find(std::string_view words, const LocalTime& around, std::string& others);
    /// The minute that is asked about: "on friday at 3 pm". Nothing where the words settle on no hour.
    static std::optional<SpokenDays> findMoment(std::string_view words, const LocalTime& around, std::string& others);
    /// Whether a date lies in these days, or between these moments.
    bool hold(const DateParts& date) const;
    bool isOneDay() const { return from.wholeDay() == to.wholeDay(); }
    /// From now on for a month: where an event is looked for whose day nobody named.
    static SpokenDays ahead(const LocalTime& around);

    bool operator==(const SpokenDays&) const = default;
};

} // namespace quorvell
