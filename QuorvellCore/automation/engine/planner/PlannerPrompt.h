// SPDX-License-Identifier: MIT
// What a planning model is told: how to decide, the goal, the steps so far and the screen.
//
// Everything that the screen says stands between two lines with a random mark that it cannot know, so that no text of a
// page can end the fence and speak as the user.
#pragma once

#include "QuorvellCore/automation/decisions/DecisionContext.h"

#include <string>
#include <string_view>

namespace quorvell {

struct PlannerPrompt {
    static constexpr std::size_t mostCandidates = 600;
    static constexpr std::size_t longestLabel = 300; ///< User-perceived characters that are told, as the next.
    static constexpr std::size_t longestValue = 500;
    static constexpr std::size_t longestPage = 2'048;
    static constexpr std::size_t mostScreenBytes = 128 * 1024; ///< Some 40,000 tokens.
    static constexpr std::size_t mostSteps = 60; ///< The last ones of the history.

    static std::string instructions();
    /// Redacted. `mark` is drawn anew for each request.
    static std::string situation(const DecisionContext& context, std::string_view mark);
};

} // namespace quorvell
