// SPDX-License-Identifier: MIT
// Everything that a decider is given for one step.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationHistory.h"
#include "QuorvellCore/automation/screen/AutomationObservation.h"
#include "QuorvellCore/text/Bytes.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct DecisionContext {
    static constexpr std::size_t longestGoal = 4'000; ///< User-perceived characters.
    static constexpr std::size_t mostHistory = 300; ///< As many steps as may be taken without a word from the user.

    std::string goal{}; ///< The user's task.
    AutomationObservation observation{};
    std::vector<AutomationHistory> history{}; ///< Oldest first.
    std::optional<Bytes> image{}; ///< Of the screen, where the step before asked to see it.

    bool operator==(const DecisionContext&) const = default;
};

} // namespace quorvell
