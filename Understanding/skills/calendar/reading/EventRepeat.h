// SPDX-License-Identifier: MIT
// How often an event comes back, as the answer to that question. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <string>

namespace quorvell {

struct EventRepeat {
    /// "Every week", "mondays": in the form of the tools, on the day of `start`; empty for what no rule can say.
    /// `plain` is in the form of CalendarWords.
    static std::string stored(const std::string& plain, const DateParts& start, const LocalTime& around);
    /// A rule begins on the first of its days: `start`, or the next that is one.
    static DateParts firstFrom(const DateParts& start, const std::string& stored, const LocalTime& around);
};

} // namespace quorvell
