// SPDX-License-Identifier: MIT
// Days that are known by what begins or ends with them, and what is asked about them. Pure.
#pragma once

#include "Understanding/skills/clock/DayWords.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct DayMarks {
    /// What "june" or "summer" begins with, where days are counted until then.
    static std::optional<DayWords> beginning(const std::string& words, const LocalTime& around);
    /// "Last day of this month", "when is the weekend", "what day was I born, 4 May 1988". `phrase` as ClockPhrase
    /// gives it.
    static std::optional<std::string> answer(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
