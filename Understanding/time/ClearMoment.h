// SPDX-License-Identifier: MIT
// Whether words name a moment so fully that nobody has to ask, or to wait for more of it. Pure.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ClearMoment {
    std::string task{}; ///< What is to be done then; the words beside those of the time.
    bool namesDay = false; ///< Or counts from now. Else it is the next time that the clock shows it.

    /// Nothing for a day without an hour, for an hour of either half of the day, and where words of a time are left.
    static std::optional<ClearMoment> in(std::string_view words, const LocalTime& around);

    bool operator==(const ClearMoment&) const = default;
};

} // namespace quorvell
