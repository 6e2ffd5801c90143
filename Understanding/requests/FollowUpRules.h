// SPDX-License-Identifier: MIT
// Reads an utterance as the answer to the question that is still open.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct FollowUpRules {
    /// Nothing when it is another request or when patience has run out; `memory` then no longer holds the question.
    /// `core` is the utterance without its opening and closing words.
    static std::optional<RuleStep> answer(
        std::string_view core, RequestMemory& memory, const RuleSurroundings& surroundings);
};

} // namespace quorvell
