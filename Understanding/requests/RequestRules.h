// SPDX-License-Identifier: MIT
// Turns the user's words, and what tools answered, into the next step of the conversation. Pure.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <string_view>

namespace quorvell {

struct RequestRules {
    /// `words` in written form: digits for numbers and times, any case.
    static RuleStep answerWords(
        std::string_view words, const RequestMemory& memory, const RuleSurroundings& surroundings);

    /// `result` is the JSON text that the owner of the tool answered `call` with.
    static RuleStep answerResult(const ToolRequest& call, std::string_view result, const RequestMemory& memory,
        const RuleSurroundings& surroundings);
};

} // namespace quorvell
