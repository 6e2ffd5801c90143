// SPDX-License-Identifier: MIT
// What was said or heard wrong is put right: "I said Rosa, not Rose", "the other one", "start again".
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct RepairRules {
    std::optional<RuleStep> step{};
    std::string words{}; ///< What is answered in place of what was said, with `memory`; where there is no step.
    RequestMemory memory{};

    /// Without a step and words where nothing is put right. `core` is an utterance without its opening and closing
    /// words.
    static RepairRules of(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
