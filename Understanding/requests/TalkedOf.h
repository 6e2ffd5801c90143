// SPDX-License-Identifier: MIT
// What was spoken of last: the thing or the day that "it", "that day" and "the same time" point at.
#pragma once

#include "Understanding/dialogue/memory/RequestMemory.h"

#include <optional>
#include <string>

namespace quorvell {

struct TalkedOf {
    enum class Kind { none, day, event, reminder, alarm };

    Kind kind = Kind::none;
    std::string title{};
    std::optional<DateParts> start{};
    bool repeats = false;

    static TalkedOf of(const RequestMemory& memory);

    bool hasHour() const { return start && !start->allDay; }
    /// "on the 27th of November", as every reader of dates takes it; `days` later.
    std::string day(int days = 0) const;
    /// "at 12:30 PM"; empty for a whole day.
    std::string hour() const;
};

} // namespace quorvell
