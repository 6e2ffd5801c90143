// SPDX-License-Identifier: MIT
// What is asked of the thing or the day that was spoken of last, and short additions to it: "is that a monday?", "what
// time?", "and saturday at 9", "sunday too". Pure.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct TalkedOfRules {
    /// Nothing for words that speak of anything else.
    static std::optional<RuleStep> answer(
        const std::string& core, const RequestMemory& memory, const RuleSurroundings& around);
    /// One more of the same at another time, in words that stand by themselves; empty where nothing is added. "Friday
    /// only, sorry" is the time alone.
    static std::string another(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
