// SPDX-License-Identifier: MIT
// What is offered for putting a reminder off.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <string>
#include <vector>

namespace quorvell {

/// One way of putting a reminder off.
struct ReminderChoice {
    enum class Kind { inTenMinutes, inAnHour, thisEvening, tomorrowMorning };

    Kind kind = Kind::inTenMinutes;
    std::string title; ///< "In an hour".
    std::string detail; ///< The moment as the user's clock shows it: "5 PM", "Sun 22 Nov, 9 AM".
    Instant date{};

    bool operator==(const ReminderChoice&) const = default;
};

struct ReminderChoices {
    /// What is offered when a reminder fires, the soonest first.
    static std::vector<ReminderChoice> later(Instant now, const Calendar& calendar, const std::string& locale);
};

} // namespace quorvell
