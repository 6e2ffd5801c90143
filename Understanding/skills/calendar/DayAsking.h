// SPDX-License-Identifier: MIT
// Questions that name nothing but a time: "is friday clear?", "a rundown of monday".
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/time/SpokenDays.h"

#include <optional>
#include <string>

namespace quorvell {

struct DayAsking {
    /// "Anything before noon on saturday?" `plain` is `core` in the form of CalendarWords.
    static std::optional<Request> read(
        const std::string& plain, const std::string& core, const RuleSurroundings& around);
    /// What is free in those days, or soon.
    static std::optional<Request> freeTime(std::optional<SpokenDays> days);
};

} // namespace quorvell
