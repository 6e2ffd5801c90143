// SPDX-License-Identifier: MIT
// A few words that name the calendar's matter and nothing else: "add event", "edit the meeting", "birthday".
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventFragment {
    /// `plain` is `core` as CalendarWords gives it.
    static std::optional<Request> read(
        const std::string& core, const std::string& plain, const RuleSurroundings& around);
};

} // namespace quorvell
