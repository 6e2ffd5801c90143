// SPDX-License-Identifier: MIT
// Where nothing is found at the time that was said: where else it is looked, and what is told of what is there. Pure.
#pragma once

#include "Understanding/dialogue/memory/EventSearch.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct EventElsewhere {
    /// The next search; nothing where all was looked through. `nothing` is what is said then, and `none` the sentence
    /// of it that says only what is not there.
    static std::optional<EventSearch> next(
        const EventSearch& search, const std::string& nothing, const std::string& none);
    /// Whether what was found this way may be changed: at the hour that was said, if not on a day.
    static bool isMeant(const std::vector<FoundThing>& found, const EventSearch& search);
    /// "No. Dentist, on Tuesday the 1st of December at 3 PM."
    static std::string told(const std::vector<FoundThing>& found, const EventSearch& search);
    /// "Which event do you mean: Standup, Yoga or Dentist?"
    static std::string choices(const std::vector<FoundThing>& found);
};

} // namespace quorvell
