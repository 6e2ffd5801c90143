// SPDX-License-Identifier: MIT
// The days through which events are looked for. Pure.
#pragma once

#include "Understanding/dialogue/memory/EventSearch.h"
#include "Understanding/time/LocalTime.h"
#include "Understanding/time/SpokenDays.h"

namespace quorvell {

struct EventRange {
    /// The days that were named, else as far as it makes sense.
    static SpokenDays of(const EventSearch& search, const LocalTime& around);
    static SpokenDays today(const LocalTime& around);
    /// Whether the calendar itself looks for the name: else all of the days is told, since more than that is asked.
    static bool isByWords(const EventSearch& search);
};

} // namespace quorvell
