// SPDX-License-Identifier: MIT
// What can be asked about months, years and weeks. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct YearQuestions {
    /// The answer; nothing where something else is asked. `phrase` as ClockPhrase gives it.
    static std::optional<std::string> answer(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
