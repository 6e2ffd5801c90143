// SPDX-License-Identifier: MIT
// Gaps between the events of a calendar, for whoever looks for time.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"
#include "Quorvell/preferences/WakingHours.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <chrono>
#include <cstddef>
#include <vector>

namespace quorvell {

struct FreeTime {
    Instant start{};
    Instant end{};

    bool operator==(const FreeTime&) const = default;

    struct Wish {
        std::chrono::minutes length{60};
        Instant from{};
        Instant to{};
        WakingHours waking{};
        std::size_t most = 5;
    };

    /// The first gaps between events that are long enough, each whole, inside waking hours, starting at a quarter of an
    /// hour. Events of whole days and those that are shown as free take no time.
    static std::vector<FreeTime> find(
        const std::vector<CalendarEvent>& events, const Wish& wish, const Calendar& calendar);
};

} // namespace quorvell
