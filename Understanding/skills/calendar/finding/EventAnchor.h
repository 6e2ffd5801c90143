// SPDX-License-Identifier: MIT
// What comes before or after an event: "after the staff meeting". Pure.
#pragma once

#include "Understanding/dialogue/memory/EventSearch.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/time/LocalTime.h"

#include <vector>

namespace quorvell {

struct EventAnchor {
    enum class Verdict { isBound, isMissing };

    /// Keeps of `listed` what is on the day of the event and on the right side of it, and bounds the days of the search
    /// so. Missing where there is no such event.
    static Verdict bound(std::vector<FoundThing>& listed, EventSearch& search, const LocalTime& around);
};

} // namespace quorvell
