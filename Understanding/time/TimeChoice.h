// SPDX-License-Identifier: MIT
// One of the instants that the user's words could mean.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"

#include <string>

namespace quorvell {

struct TimeChoice {
    DateParts date{};
    std::string when{}; ///< The same in words.

    bool operator==(const TimeChoice&) const = default;
};

} // namespace quorvell
