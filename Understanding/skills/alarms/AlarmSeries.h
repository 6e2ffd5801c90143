// SPDX-License-Identifier: MIT
// Several alarms of one request: "6, 6:15 and 6:30 tomorrow", "three, ten minutes apart from 6 am", "thursday and
// friday at 7", "at 7 for the next five days". Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/time/LocalTime.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quorvell {

struct AlarmSeries {
    static constexpr std::size_t most = 12; ///< More at once nobody means.

    /// Whether words of times want more than one alarm.
    static bool isMeant(const std::string& words);
    /// How many are wanted by the words before "alarms": 3 for "three"; 0 where no number is said.
    static int countIn(const std::string& words);
    /// A time for each alarm, as their reader wants it. Empty where the words do not settle them. `count` may be 0.
    static std::vector<std::string> times(const std::string& words, int count, const LocalTime& around);
    /// The time of the next one, where the one before it was taken for that half of the day, and that day.
    static std::string following(const std::string& time, const DateParts& before, bool repeats);
};

} // namespace quorvell
