// SPDX-License-Identifier: MIT
// Rules that name weeks by their numbers ("BYWEEKNO=20"). Counted here: the parser's library finds a week 53 in years
// that have none, and other days where it starts to look later. Only for the sources of this room.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <libical/ical.h>

#include <vector>

namespace quorvell {

/// The first week of a year is the first that has most of its days in it; weeks begin where the rule says.
struct IcsWeekNumbers {
    static bool areNamed(const icalrecurrencetype& rule);
    /// With weekdays and months; what else a rule can name beside the weeks has no one meaning.
    static bool canBeFollowed(const icalrecurrencetype& rule);

    /// Whose weeks a day belongs to; at the turn of the year that may be another than its date has.
    static int yearOf(const icalrecurrencetype& rule, LocalDay day);
    /// Those that the rule names in the weeks of a year, in their order. `first` is the first day of the series, whose
    /// weekday counts where none is named.
    static std::vector<LocalDay> days(const icalrecurrencetype& rule, LocalDay first, int year);
};

} // namespace quorvell
