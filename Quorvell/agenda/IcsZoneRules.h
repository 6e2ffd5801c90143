// SPDX-License-Identifier: MIT
// How a calendar file says that the clock of a zone changes. Only for the sources of this room.
#pragma once

#include <libical/ical.h>

namespace quorvell {

struct IcsZoneRules {
    /// The parser's library lists all changes of a zone before it answers the first question about it. So: no rule
    /// finer than a year, and no more changes until the end of `lastYear` than IcsLimits allows.
    static bool canBeFollowed(icalcomponent* zone, int lastYear);
};

} // namespace quorvell
