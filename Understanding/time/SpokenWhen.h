// SPDX-License-Identifier: MIT
// Dates in the words of a reply.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <string>
#include <string_view>

namespace quorvell {

struct SpokenWhen {
    /// "Sunday 22 November at 5 PM" becomes "Sunday the 22nd of November at 5 PM": clearer to hear. Other forms stay.
    static std::string words(std::string_view when);
    /// The same with "on" where it starts with a weekday.
    static std::string on(std::string_view when);
    /// "Sunday the 22nd of November at 5 PM"; without a time for a whole day. Empty for a day that does not exist.
    static std::string date(const DateParts& parts);
    /// The same with the year where that is not this one.
    static std::string dateSeenFrom(const DateParts& parts, const LocalTime& around);
    /// "5 in the morning"; empty for a whole day.
    static std::string timeOfDay(const DateParts& parts);
    /// "5 PM"; empty for a whole day.
    static std::string clock(const DateParts& parts);
};

} // namespace quorvell
