// SPDX-License-Identifier: MIT
// How a reminder comes back.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ReminderRepeat {
    enum class Kind { daily, weekdays, weekly, monthly, yearly };

    Kind kind = Kind::daily;
    std::vector<int> weekdays; ///< Of weekly: 1 = Sunday to 7 = Saturday, sorted, no number twice.
    int dayOfMonth = 0; ///< Of monthly: 1 to 31.

    static ReminderRepeat daily() { return {}; }
    static ReminderRepeat everyWeekday() { return {Kind::weekdays, {}, 0}; } ///< Monday to Friday.
    static ReminderRepeat weekly(int weekday) { return {Kind::weekly, {weekday}, 0}; }
    static ReminderRepeat monthly(int day) { return {Kind::monthly, {}, day}; }
    static ReminderRepeat yearly() { return {Kind::yearly, {}, 0}; }

    /// From the text form, in any case: "daily", "weekdays", "yearly", "weekly:2,4", "monthly:31".
    static std::optional<ReminderRepeat> fromStored(std::string_view text);
    std::string stored() const;

    /// "Every day", "Every Monday, Wednesday and Friday", "Every month on the 3rd".
    std::string spoken(const std::string& locale) const;

    /// The next occurrence later than `after`, at the time of day of `base`, the occurrence that the reminder stands
    /// at. The search by days looks 14 days beyond `base` and then gives up.
    std::optional<Instant> next(Instant after, Instant base, const Calendar& calendar) const;

    /// The first occurrence from `start` on, at its time of day: `start` itself where the rule has its day.
    Instant first(Instant start, const Calendar& calendar) const;

    bool operator==(const ReminderRepeat&) const = default;
};

} // namespace quorvell
