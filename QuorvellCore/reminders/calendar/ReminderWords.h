// SPDX-License-Identifier: MIT
// Says a due instant to the user.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <string>

namespace quorvell {

struct ReminderWords {
    enum class Time { isKnown, isUnknown };

    /// "Sunday 22 November at 5 PM", for speech.
    static std::string spoken(Instant date, Instant now, const Calendar& calendar, const std::string& locale);

    /// The same with the year where that is not this one: "Monday 20 March 2028 at 5 PM".
    static std::string spokenWithYear(Instant date, Instant now, const Calendar& calendar, const std::string& locale);

    /// "Sunday 22 Nov, 5 PM", "Today, 5 PM"; without the time where only the day was named.
    static std::string full(Instant date, Time time, Instant now, const Calendar& calendar, const std::string& locale);

    /// "Sun 22 Nov, 5 PM", on the current day "5 PM".
    static std::string short_(Instant date, Instant now, const Calendar& calendar, const std::string& locale);

    /// One of several to choose from: "Sun 22 Nov, 5 PM", on the current day "This afternoon, 4 PM".
    static std::string choice(Instant date, Instant now, const Calendar& calendar, const std::string& locale);

    /// The time of day by the locale's clock: "5 PM", "5:30 PM", "17:00".
    static std::string clock(Instant date, const Calendar& calendar, const std::string& locale);

    /// "1st", "2nd", "3rd", "4th", "11th".
    static std::string ordinal(int number);
};

} // namespace quorvell
