// SPDX-License-Identifier: MIT
// What can be asked about days: today's, another one's weekday or date, how far away one is, how long a month is. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct DayQuestions {
    /// The answer; nothing where something else is asked. `phrase` as ClockPhrase gives it, `core` as it was said.
    static std::optional<std::string> answer(
        const std::string& phrase, const std::string& core, const LocalTime& around);
};

} // namespace quorvell
