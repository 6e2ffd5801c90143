// SPDX-License-Identifier: MIT
// Decides goals that are so plain that a rule is certain of them.
//
// A goal is one of four forms and nothing else, or the rules are silent: an application or a site that is named, a
// scroll, going back, the one control whose label is the goal. A goal of several steps, a label that is there twice and
// whatever the guard forbids are the planner's.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/decisions/DecisionContext.h"

#include <optional>
#include <span>
#include <string>

namespace quorvell {

struct DeterministicTasks {
    static constexpr std::size_t longestGoal = 200; ///< Bytes; a plain goal is short.

    /// `applications` are the names of those on this computer: without them "open notes" could be anything, and only
    /// "open the notes app" is taken. Finished once the one step is the whole history and was verified,
    /// but for a goal that is a label and nothing else.
    static std::optional<AutomationDecision> decide(
        const DecisionContext& context, std::span<const std::string> applications = {});
};

} // namespace quorvell
