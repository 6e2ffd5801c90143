// SPDX-License-Identifier: MIT
// Days that are over, and all that lie on one side of a day: no reader of times to come knows them. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"
#include "Understanding/time/SpokenDays.h"

#include <optional>
#include <string>

namespace quorvell {

/// What is taken is no more in `words`.
struct DaysAround {
    /// "Yesterday", "last week".
    static std::optional<SpokenDays> takePast(std::string& words, const LocalTime& around);
    /// "After wednesday", "before friday", at the end of the words: as far as a month, and no more of the past than
    /// today.
    static std::optional<SpokenDays> takeBounded(std::string& words, const LocalTime& around);
};

} // namespace quorvell
