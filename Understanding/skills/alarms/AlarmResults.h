// SPDX-License-Identifier: MIT
// What follows from the results of set_reminder, of alarms and timers.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

namespace quorvell {

struct AlarmResults {
    static RuleStep take(
        const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
