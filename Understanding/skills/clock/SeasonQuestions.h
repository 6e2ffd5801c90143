// SPDX-License-Identifier: MIT
// What comes round with the year: seasons, clocks that are put forward and back, holidays. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

struct SeasonQuestions {
    /// The day on which "summer" begins next, in the northern half of the world.
    static std::optional<std::chrono::sys_days> beginning(const std::string& season, const LocalTime& around);
    /// The answer; nothing where something else is asked. `phrase` as ClockPhrase gives it.
    static std::optional<std::string> answer(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
