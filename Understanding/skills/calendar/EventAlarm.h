// SPDX-License-Identifier: MIT
// An alarm that hangs on an event: "wake me an hour before the dentist".
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventAlarm {
    /// Nothing for anything else, and where both things are alarms.
    static std::optional<Request> read(const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
