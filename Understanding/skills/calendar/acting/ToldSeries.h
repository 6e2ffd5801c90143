// SPDX-License-Identifier: MIT
// The times of a series that a list tells of, told as one: "on weekdays at 9:30 AM". Pure.
#pragma once

#include "Understanding/dialogue/memory/FoundThing.h"

#include <string>
#include <vector>

namespace quorvell {

struct ToldSeries {
    /// What all times of a series at the same hour share; nobody else has it.
    static std::string keyOf(const FoundThing& thing);
    /// The times of the series of `first` among `things`; `first` alone where it does not repeat.
    static std::vector<DateParts> timesOf(const FoundThing& first, const std::vector<FoundThing>& things);
    /// Behind the title: "from Monday to Friday at 9:30 AM", "on Saturdays at 9 AM", "5 times, first on ...".
    static std::string when(const std::vector<DateParts>& times);
    /// Of each series only the first time stays.
    static void keepFirstTimes(std::vector<FoundThing>& things);
};

} // namespace quorvell
