// SPDX-License-Identifier: MIT
// Whether a step of the rules leaves something behind.
#pragma once

#include "Understanding/dialogue/RuleStep.h"

namespace quorvell {

struct CallEffect {
    /// A call that only looks something up.
    static bool isLookUp(const ToolRequest& call);
    /// A call that changes something, one that leads to a change, or a question on the way to one. `before` is what was
    /// in mind before the words.
    static bool leadsToChange(const RuleStep& step, const RequestMemory& before);
};

} // namespace quorvell
