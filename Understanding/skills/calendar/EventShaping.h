// SPDX-License-Identifier: MIT
// How long an event that is there lasts, where it is, and the same once more.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventShaping {
    /// `plain` is `core` as CalendarWords gives it.
    static std::optional<Request> read(
        const std::string& core, const std::string& plain, const RuleSurroundings& around);
};

} // namespace quorvell
