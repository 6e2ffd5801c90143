// SPDX-License-Identifier: MIT
// The body of a request to a planning model.
#pragma once

#include "QuorvellCore/automation/decisions/DecisionContext.h"
#include "QuorvellCore/automation/engine/planner/PlannerStyle.h"
#include "QuorvellCore/text/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// What is said for the one more try after an answer that was no decision.
struct PlannerRepair {
    static constexpr std::size_t longestAnswer = 4'000; ///< User-perceived characters of it that are sent back.

    std::string answer{}; ///< As the model gave it.
    std::string problem{}; ///< A sentence of decisionProblem or readDecision.

    bool operator==(const PlannerRepair&) const = default;
};

inline constexpr int mostPlannerTokens = 4'000; ///< Of an answer, what the model thinks included.
inline constexpr std::size_t largestPlannerImage = 6 * 1024 * 1024; ///< Bytes; a larger one is left out, and said so.

/// `mark` is random and new for each request: the screen's text stands between two lines with it.
Json plannerRequest(PlannerStyle style, const std::string& model, const DecisionContext& context, std::string_view mark,
    const std::optional<PlannerRepair>& repair = std::nullopt);

} // namespace quorvell
