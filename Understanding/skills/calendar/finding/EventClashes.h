// SPDX-License-Identifier: MIT
// What is at the same time as something else, and what comes back. Pure.
#pragma once

#include "Understanding/dialogue/memory/EventSearch.h"
#include "Understanding/dialogue/memory/FoundThing.h"

#include <string>
#include <vector>

namespace quorvell {

struct EventClashes {
    /// "Nothing clashes this week." With a name only what clashes with that; empty where there is no such event.
    static std::string told(const std::vector<FoundThing>& events, const EventSearch& search);
    /// "Standup, on weekdays at 9:30 AM." `events` are those that are asked about, or all.
    static std::string repeating(std::vector<FoundThing> events, const EventSearch& search);
};

} // namespace quorvell
