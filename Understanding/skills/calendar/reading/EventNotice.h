// SPDX-License-Identifier: MIT
// What is to come ahead of an event, in the user's words: "an hour before the party to charge the camera".
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventNotice {
    std::string ahead{}; ///< "an hour"; empty for when it begins, or where nobody said how long.
    std::string event{};
    std::string deed{}; ///< Empty where the reminder is of the event itself.
    bool isUsualLead = false; ///< Before it, and nobody said how long.
    bool isLoose = false; ///< Nothing says that it stands in the calendar: "remind me of the meeting".

    /// `plain` as CalendarWords gives it.
    static std::optional<EventNotice> in(const std::string& plain, const LocalTime& around);
    /// 0 where it is no length.
    static int minutesIn(const std::string& length);
    /// What the reminder is of where no such event is there: what `core` says behind the wish.
    static std::string otherwise(const std::string& core);

    bool operator==(const EventNotice&) const = default;
};

} // namespace quorvell
