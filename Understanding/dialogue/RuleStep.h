// SPDX-License-Identifier: MIT
// What the rules make of an utterance or of a tool's result: a tool to carry out or a text to say, and what to keep in
// mind from then on.
#pragma once

#include "Understanding/dialogue/memory/RequestMemory.h"
#include "Understanding/dialogue/memory/ToolRequest.h"

#include <string>
#include <utility>
#include <variant>

namespace quorvell {

struct RuleStep {
    std::variant<ToolRequest, std::string> answer;
    RequestMemory memory;
    bool isNotUnderstood = false; ///< The text says that the words are beyond the rules: somebody else may try them.
    bool isNotFound = false; ///< The text says that what was to be changed is not there: another skill may know it.

    /// Asks the user back.
    static RuleStep asking(PendingQuestion question, RequestMemory memory)
    {
        std::string text = question.question;
        memory.pending = std::move(question);
        return {std::move(text), std::move(memory)};
    }

    bool operator==(const RuleStep&) const = default;
};

} // namespace quorvell
