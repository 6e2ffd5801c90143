// SPDX-License-Identifier: MIT
// The rules by which events of a calendar file repeat. Only for the sources of this room.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"

#include <libical/ical.h>

#include <chrono>
#include <string>

namespace quorvell {

struct IcsRule {
    /// For a series whose first day is `first`, which the rule names. As plain as can be, so that other programs and a
    /// later move of the series need not understand more than they do.
    static std::string text(const ReminderRepeat& repeat, LocalDay first);

    /// What names days that no month has would be looked for through all the years there are.
    static bool neverComes(const icalrecurrencetype& rule);
    /// Rules by the minute and second, and by the hour with conditions, can search for ever; no calendar of people
    /// holds them.
    static bool canBeFollowed(const icalrecurrencetype& rule);
    /// Takes out and sorts what would make the library give other times, or times in no order, where the search begins
    /// later: "every second Monday of the week" and "the last of one" mean nothing or nothing more than the rule
    /// without.
    static void simplify(icalrecurrencetype& rule);

    /// Whether the rules give the same days, so many later, when the first day moves. Rules that name dates by
    /// themselves do not.
    static bool canShift(icalcomponent* series, std::chrono::days shift);
    /// Moves weekdays and ends of the rules along with the first occurrence.
    static void shift(icalcomponent* series, std::chrono::seconds shift, std::chrono::days dayShift);
};

} // namespace quorvell
