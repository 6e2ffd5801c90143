// SPDX-License-Identifier: MIT
// What can be asked about months, years and weeks. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

struct YearQuestions {
    /// "this month", "december", "february next year"
    static std::optional<std::chrono::year_month> month(const std::string& words, const LocalTime& around);
    /// The answer; nothing where something else is asked. `phrase` as ClockPhrase gives it.
    static std::optional<std::string> answer(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
