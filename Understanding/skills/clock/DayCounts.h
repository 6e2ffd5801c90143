// SPDX-License-Identifier: MIT
// Days that are counted: what is left of the year, Mondays of a month, somebody's age. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct DayCounts {
    /// The answer; nothing where something else is asked. `phrase` as ClockPhrase gives it.
    static std::optional<std::string> answer(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
