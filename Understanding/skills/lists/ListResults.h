// SPDX-License-Identifier: MIT
// What follows from what keep_note answers about lists.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/ToolRequest.h"

namespace quorvell {

struct ListResults {
    static RuleStep take(
        const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
