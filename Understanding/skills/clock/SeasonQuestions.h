// SPDX-License-Identifier: MIT
// What comes round with the year: seasons, clocks that are put forward and back, holidays. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct SeasonQuestions {
    /// The answer; nothing where something else is asked. `phrase` as ClockPhrase gives it.
    static std::optional<std::string> answer(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
