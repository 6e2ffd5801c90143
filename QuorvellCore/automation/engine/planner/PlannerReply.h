// SPDX-License-Identifier: MIT
// What a planning model answered.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/engine/http/DecisionError.h"
#include "QuorvellCore/automation/engine/planner/PlannerStyle.h"
#include "QuorvellCore/text/Json.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace quorvell {

inline constexpr std::size_t longestDecisionText = 64 * 1024; ///< Bytes.

/// The text in which the model put its decision; why there is none: the service reports an error, the model declined,
/// or its answer was cut off.
std::variant<std::string, DecisionError> readPlannerReply(PlannerStyle style, const Json& reply);

/// A decision that could not be read, in a sentence for the model.
struct DecisionProblem {
    std::string text{};
    bool operator==(const DecisionProblem&) const = default;
};

/// The text is one JSON object and nothing else.
std::variant<AutomationDecision, DecisionProblem> readDecision(std::string_view text);

/// Why a decision that can be read cannot be carried out on this screen.
std::optional<DecisionProblem> decisionProblem(
    const AutomationDecision& decision, const AutomationObservation& observation);

} // namespace quorvell
