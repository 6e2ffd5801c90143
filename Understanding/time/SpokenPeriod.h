// SPDX-License-Identifier: MIT
// Several days by one name: "next week", "this month", "in march", "next weekend", "the next ten days", "from monday to
// wednesday", "june 3-5".
#pragma once

#include "Understanding/time/SpokenStretch.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// Nothing where the words are anything else, or more. What has begun counts from today on, unless it is over.
std::optional<SpokenStretch> spokenPeriod(std::string_view words, const LocalTime& around);

} // namespace quorvell
