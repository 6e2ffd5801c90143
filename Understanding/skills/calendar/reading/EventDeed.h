// SPDX-License-Identifier: MIT
// What is to be done before an event: "an hour before the party to charge the camera".
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/memory/EventSearch.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventDeed {
    /// The search with the deed apart from the event, where nothing is called by both together: "flight to Lisbon" is
    /// one name. Nothing where none stands there.
    static std::optional<EventSearch> apart(const EventSearch& search);
    /// The event is not there: `nothing` says so, and the time is asked for.
    static RuleStep askTime(const EventSearch& search, const std::string& nothing, RequestMemory memory);
};

} // namespace quorvell
