// SPDX-License-Identifier: MIT
// What became of an event, told as news: "the meeting has been moved to thursday", "yoga is at 10 instead of 9".
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventNews {
    static std::optional<Request> read(const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
