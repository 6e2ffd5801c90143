// SPDX-License-Identifier: MIT
// "Undo that", "undo the last two", "undo adding milk", "redo", "what did you just do".
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct UndoRules {
    /// Nothing for words that ask for nothing of the kind. `core` is an utterance without its opening and closing
    /// words.
    static std::optional<RuleStep> answer(
        const std::string& core, const RequestMemory& memory, const RuleSurroundings& around);
    /// "Should I take that back?", after words that say that something is wrong.
    static RuleStep offer(const std::string& lead, RequestMemory memory);
};

} // namespace quorvell
