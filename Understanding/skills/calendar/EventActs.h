// SPDX-License-Identifier: MIT
// Wishes about an event that is there: a reminder before it, another name, another place.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventActs {
    /// `plain` is `core` in the form of CalendarWords. Nothing for anything else.
    static std::optional<Request> read(
        const std::string& core, const std::string& plain, const RuleSurroundings& around);
};

} // namespace quorvell
