// SPDX-License-Identifier: MIT
// The hours of a day by which alarms are told from each other: "at 7", "in the morning", "between 6 and 9 am". Pure.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct AlarmHours {
    int from = 0; ///< Minutes of the day.
    int end = 0; ///< Behind the last one.
    bool isOpen = false; ///< An hour of either half of the day.
    std::string words{}; ///< For a reply: "for 6 AM", "before 8 AM", "in the morning".

    /// Each takes what it reads out of the words.
    static std::optional<AlarmHours> takeClock(std::string& words);
    static std::optional<AlarmHours> takeStretch(std::string& words);
    /// A part of the day that stands by itself: behind a day it is read with it.
    static std::optional<AlarmHours> takePart(std::string& words);

    bool hold(int minuteOfDay) const;

    bool operator==(const AlarmHours&) const = default;
};

} // namespace quorvell
