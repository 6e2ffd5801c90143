// SPDX-License-Identifier: MIT
// A way to a goal that was gone at least twice, each step of it checked, and that is gone again without asking a model.
#pragma once

#include "QuorvellCore/automation/engine/macros/MacroStep.h"
#include "QuorvellCore/text/Instant.h"

#include <cstddef>
#include <vector>

namespace quorvell {

/// A value. Its goal and the place where it begins, application and site, are its key.
struct VerifiedMacro {
    static constexpr int timesToTrust = 2; ///< Verified runs, equal step by step.
    static constexpr std::size_t mostSteps = 30;
    static constexpr std::size_t longestGoal = 500; ///< Bytes.
    static constexpr std::chrono::days trusted{180}; ///< Since it was last verified; applications change.

    /// What it has to say to a step of a task.
    enum class Fit {
        other, ///< Not its goal or its place, or the task already went another way.
        ready,
        broken, ///< It had begun, and what should be there now is not, or what it did had no effect.
    };

    std::string goal{}; ///< As GoalWords has it.
    std::vector<MacroStep> steps{}; ///< Never empty.
    int verified = 1; ///< Runs.
    Instant lastVerified{};

    Fit fit(const DecisionContext& context, Instant now) const;

    /// The next step of the way, or that it is finished where the last step itself shows it; `changed` alone does not.
    /// Nothing unless it is ready, and where only the planner can tell whether the goal is reached.
    std::optional<AutomationDecision> decide(const DecisionContext& context, Instant now) const;

    bool hasKeyOf(const VerifiedMacro& other) const;

    bool operator==(const VerifiedMacro&) const = default;
};

} // namespace quorvell
