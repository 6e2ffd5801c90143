// SPDX-License-Identifier: MIT
// What makes sense only right behind the event that was talked about: "it's at the town hall", "make it an hour and a
// half", "which day is that?" Pure.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventTalk {
    /// `words` are as they were said; nothing where they are of something else.
    static std::optional<RuleStep> goOn(
        const std::string& words, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
