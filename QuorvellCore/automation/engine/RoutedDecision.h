// SPDX-License-Identifier: MIT
// A decision with who made it and how long that took.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// Who may decide, the cheapest first.
struct DecisionTier {
    static constexpr std::string_view macro = "macro"; ///< A way that was verified before.
    static constexpr std::string_view local = "local"; ///< A fixed rule.
    static constexpr std::string_view pim = "pim"; ///< The fast selector.
    static constexpr std::string_view planner = "planner";
};

struct RoutedDecision {
    AutomationDecision decision{};
    std::string_view tier = DecisionTier::planner; ///< One of DecisionTier.
    double milliseconds = 0; ///< From the question to the answer.
    std::optional<bool> shadowAgreed{}; ///< Never set here: the comparison comes later, and by itself.

    bool operator==(const RoutedDecision&) const = default;
};

} // namespace quorvell
