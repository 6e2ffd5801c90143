// SPDX-License-Identifier: MIT
// The day that words name, in any year. Nothing is set for it, so that a day of the past will do as well. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct DayWords {
    /// Where the words leave the year open: which one.
    enum class Year { coming, past };

    std::chrono::sys_days day{};
    std::string name{}; ///< "Christmas Day"; empty for a day that is only a date.
    bool isImpossible = false; ///< "31 june": there is no such day.

    /// "next tuesday", "15 march 1987", "in three weeks", "10 days after christmas", "easter 2030".
    static std::optional<DayWords> read(std::string_view words, const LocalTime& around, Year year = Year::coming);
    /// 1 for January, also in short; nothing when the word is none.
    static std::optional<std::chrono::month> month(std::string_view word);

    bool operator==(const DayWords&) const = default;
};

} // namespace quorvell
