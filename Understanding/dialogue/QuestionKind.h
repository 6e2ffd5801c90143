// SPDX-License-Identifier: MIT
// A question that a skill can ask, and how it takes the answer.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

/// Each is one object that lives as long as the program; questions are told apart by its address.
struct QuestionKind {
    /// Nothing for an answer that does not fit. `memory` no longer holds the question.
    using Answer = std::optional<RuleStep> (*)(
        const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around);

    Answer answer = nullptr; ///< Empty for a question of yes or no: the call that waits is made, or is not.
    /// Whether words answer it that could be read as a request of their own; empty for none that do.
    bool (*isAnswer)(const std::string& core, const RuleSurroundings& around) = nullptr;
    bool takesText =
        false; ///< Nearly any words answer it; those that speak of something else must not become its text.

    /// Whether the call that waits is made as it stands, once the user agrees.
    static bool isYesOrNo(const PendingQuestion& asked) { return asked.kind && !asked.kind->answer; }
};

} // namespace quorvell
