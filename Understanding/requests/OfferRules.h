// SPDX-License-Identifier: MIT
// What is told of a day that comes, and wishes for nothing: it may be for the calendar. Pure.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct OfferRules {
    /// Asks whether it should be put down; nothing for words that name no day to come.
    static std::optional<RuleStep> answer(
        const std::string& core, const RequestMemory& memory, const RuleSurroundings& around);
    /// "No, it's friday", "and it takes two hours", behind such an offer: the offer as it was put right.
    static std::optional<RuleStep> corrected(
        const std::string& core, const RequestMemory& memory, const RuleSurroundings& around);
    /// "Put it in the calendar", where just that was offered.
    static bool isAccepted(const std::string& core, const PendingQuestion& asked);
};

} // namespace quorvell
