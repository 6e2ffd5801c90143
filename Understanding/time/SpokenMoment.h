// SPDX-License-Identifier: MIT
// A moment, or a day, that words settle on. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct SpokenMoment {
    DateParts date{}; ///< A whole day where no time was named.
    std::string rest{}; ///< The words without those of the time.
    bool namesDay = false; ///< Else it is the next time that the clock shows it.
    std::string repeat{}; ///< How it comes back, in the form of the tools; empty for once.

    /// An hour without a half of the day ("at one") is taken between 8 in the morning and 8 in the evening. Nothing
    /// where the words say more of a time than was understood: "31 november", "monday and wednesday", "before 1 pm".
    static std::optional<SpokenMoment> read(std::string_view words, const LocalTime& around);
    /// "1/12", where nobody can tell which is the month: what it may be, in the order of time. Else none.
    static std::vector<DateParts> eitherDay(std::string_view words, const LocalTime& around);
    /// What is left of the words without those that speak of a time, understood or not.
    static std::string wordsBeside(std::string_view words, const LocalTime& around);

    bool operator==(const SpokenMoment&) const = default;
};

} // namespace quorvell
