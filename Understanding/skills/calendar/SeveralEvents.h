// SPDX-License-Identifier: MIT
// Several events in one breath: "soccer on tuesday at 4 and piano on wednesday at 5".
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct SeveralEvents {
    /// `plain` is `core` as CalendarWords gives it.
    static std::optional<Request> read(
        const std::string& core, const std::string& plain, const RuleSurroundings& around);
};

} // namespace quorvell
