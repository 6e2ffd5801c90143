// SPDX-License-Identifier: MIT
// The decider of last resort: a planning model.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/decisions/DecisionContext.h"
#include "QuorvellCore/automation/engine/http/DecisionError.h"

#include <functional>
#include <stop_token>
#include <variant>

namespace quorvell {

using PlannerAnswer = std::variant<AutomationDecision, DecisionError>;

/// Waits for the answer; called on a worker.
using DecisionPlanner = std::function<PlannerAnswer(const DecisionContext&, std::stop_token)>;

} // namespace quorvell
