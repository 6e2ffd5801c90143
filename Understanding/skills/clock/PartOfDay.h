// SPDX-License-Identifier: MIT
// Whether the clock is past an hour, in a part of the day, and how scripts of 24 hours write it. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>

namespace quorvell {

struct PartOfDay {
    /// "Is it still morning", "is it past noon", "the time in 24 hours". `phrase` as ClockPhrase gives it.
    static std::optional<std::string> answer(const std::string& phrase, const LocalTime& around);
};

} // namespace quorvell
