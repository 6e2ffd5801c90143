// SPDX-License-Identifier: MIT
// The events that a calendar holds in a stretch of time, and what of it is missing.
#pragma once

#include "Quorvell/agenda/CalendarEvent.h"

#include <string>
#include <vector>

namespace quorvell {

struct IcsOmissions {
    bool repeats = false; ///< Something repeats too finely, too often or in too odd a way to be followed.
    bool zones = false; ///< A zone that is described cannot be followed; its times stand by the user's clock.
    bool amount = false; ///< There are more than IcsLimits::mostOccurrences.
    bool time = false; ///< Patience ended.

    IcsOmissions& operator|=(const IcsOmissions& other);
    /// For the user, one for each; `calendar` is what they begin with.
    std::vector<std::string> sentences(const std::string& calendar) const;
};

struct [[nodiscard]] IcsReading {
    std::vector<CalendarEvent> events; ///< By their starts.
    IcsOmissions omissions;
};

} // namespace quorvell
