// SPDX-License-Identifier: MIT
// Wishes for a new event, and for another time of one, that say so in words which need no weighing.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventSetting {
    /// Nothing for anything else.
    static std::optional<Request> read(const std::string& core, const RuleSurroundings& around);
    /// "Church with Ben on sunday": asks for nothing by itself, so it is asked about.
    static std::optional<Request> readStatement(const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
