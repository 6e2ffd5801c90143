// SPDX-License-Identifier: MIT
// Hours of a day: "tomorrow between 9:20 and 10:30", "from three to five", "after 6 pm today", "before noon".
#pragma once

#include "Understanding/time/SpokenStretch.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// Nothing where the words are anything else, or more. Hours without a day are today's, or tomorrow's where those are
/// over; without a half of the day they lie between 8 in the morning and 8 in the evening.
std::optional<SpokenStretch> spokenHours(
    std::string_view words, const LocalTime& around, SpokenStretch::DayReader readDay);

} // namespace quorvell
