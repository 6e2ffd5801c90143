// SPDX-License-Identifier: MIT
// The wording of what was looked for in the calendar.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/memory/EventSearch.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/time/LocalTime.h"

#include <string>
#include <vector>

namespace quorvell {

struct EventLookupReply {
    const EventSearch& search;
    const ToolResult& result;
    const LocalTime& around;

    /// `listed` is what is there besides.
    std::string nothing(const std::vector<FoundThing>& listed) const;
    /// The sentence of it that says only what is not there.
    std::string none() const;
    std::string found(const std::vector<FoundThing>& found) const;
    /// Which of them is meant.
    static std::string several(const std::vector<FoundThing>& found);

private:
    std::string daysNamed() const;
    std::string wanted() const;
    std::string sentences(const std::vector<FoundThing>& found) const;
    std::string ofOne(const FoundThing& event) const;
};

} // namespace quorvell
