// SPDX-License-Identifier: MIT
// Time that is to be kept: "block friday from 2 to 4", "I am busy tomorrow afternoon".
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventBlocking {
    /// `plain` is `core` as CalendarWords gives it.
    static std::optional<Request> read(
        const std::string& core, const std::string& plain, const RuleSurroundings& around);
};

} // namespace quorvell
