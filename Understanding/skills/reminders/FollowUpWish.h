// SPDX-License-Identifier: MIT
// Short answers to what was just set, kept or told that only say what is different: "the day after", "an hour earlier".
#pragma once

#include "Understanding/dialogue/memory/Wish.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct FollowUpWish {
    /// A wish to move what was talked about, seen from its own time; nothing for other words. "two days later", "the
    /// day before", "an hour earlier", "same time on saturday", "not friday, saturday"; or to
    /// give it a rule, "every friday".
    static std::optional<Wish> read(std::string_view core, const LocalTime& around);
};

} // namespace quorvell
