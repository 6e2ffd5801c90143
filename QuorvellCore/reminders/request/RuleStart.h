// SPDX-License-Identifier: MIT
// From when on something comes back: "every tuesday at five starting from december".
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct RuleStart {
    std::string words; ///< Without those of the start.
    Instant justBefore{}; ///< The last minute before that day: seen from then the rule's first date is the one meant.

    /// Nothing where nothing comes back, or where no start is named.
    static std::optional<RuleStart> find(std::string_view words, Instant now, const Calendar& calendar);
};

} // namespace quorvell
