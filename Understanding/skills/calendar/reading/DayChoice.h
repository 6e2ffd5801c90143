// SPDX-License-Identifier: MIT
// Which of several days an answer names. Pure.
#pragma once

#include "Understanding/time/TimeChoice.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct DayChoice {
    /// By its number, by its name, or as the first or the last; nothing where that fits several, or none.
    static std::optional<DateParts> named(const std::string& core, const std::vector<TimeChoice>& choices);
};

} // namespace quorvell
