// SPDX-License-Identifier: MIT
// A note, a reminder or an event that a tool named.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct FoundThing {
    std::string id{}; ///< For the tools; never spoken.
    std::string title{};
    std::optional<DateParts> start{}; ///< Nothing where it was not told.
    std::optional<DateParts> end{};
    std::string_view skill{}; ///< Name of the one that can change it, a literal.
    bool repeats = false;

    bool operator==(const FoundThing&) const = default;
};

} // namespace quorvell
