// SPDX-License-Identifier: MIT
// Keeps words that are no wish from changing anything unasked.
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/requests/RequestMood.h"

namespace quorvell {

struct CarefulStep {
    /// Whether the request changes nothing, neither at once nor once something is found.
    static bool onlyLooksUp(const Request& request, const RuleSurroundings& around);
    /// Whether the call does more than look something up.
    static bool mayChange(const ToolRequest& call);
    /// The step that a wish would lead to, or a question before it. `memory` is that from before the words.
    static RuleStep take(RuleStep step, const Request& request, RequestMood mood, RequestMemory memory);
};

} // namespace quorvell
