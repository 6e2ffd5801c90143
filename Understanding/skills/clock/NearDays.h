// SPDX-License-Identifier: MIT
// What can be asked about a day that is named by where it stands: tomorrow's date, whether yesterday was a Sunday.
// Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct NearDays {
    /// The answer; nothing where something else is asked. `phrase` as ClockPhrase gives it.
    static std::optional<std::string> date(const std::string& phrase, const LocalTime& around);
    /// "Is it friday today?", "was yesterday a sunday?"
    static std::optional<std::string> isWeekday(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
