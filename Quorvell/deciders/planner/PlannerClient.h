// SPDX-License-Identifier: MIT
// Asks a planning model for the next step.
#pragma once

#include "Quorvell/deciders/choice/DeciderAccess.h"
#include "QuorvellCore/automation/engine/DecisionPlanner.h"
#include "QuorvellCore/automation/engine/http/DecisionHTTP.h"
#include "QuorvellCore/automation/engine/planner/PlannerRequest.h"

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <variant>

namespace quorvell {

/// A value; its transport is shared. Any thread.
struct PlannerClient {
    /// For a decision with all that is tried for it. Models that think take half a minute.
    static constexpr std::chrono::milliseconds patience = std::chrono::seconds(90);
    /// What a service may ask for before it is asked again; the user waits meanwhile.
    static constexpr std::chrono::seconds longestPause{10};

    PlannerAccess access{};
    std::shared_ptr<DecisionHTTP> http{};

    /// Waits for the answer. A model whose answer is no step that can be done is told so, once. A service that is asked
    /// too much and says for how long is asked once more; nothing else is tried again, since the next step comes with a
    /// newer screen.
    PlannerAnswer decide(const DecisionContext& context, std::stop_token stop) const;

private:
    using Reply = std::variant<Json, DecisionError>;
    using Deadline = std::chrono::steady_clock::time_point;

    Reply ask(const Json& body, Deadline deadline, const std::stop_token& stop) const;
    std::variant<std::string, DecisionError> answerTo(const DecisionContext& context,
        const std::optional<PlannerRepair>& repair, Deadline deadline, const std::stop_token& stop) const;
    DecisionError told(DecisionError error) const;
};

} // namespace quorvell
