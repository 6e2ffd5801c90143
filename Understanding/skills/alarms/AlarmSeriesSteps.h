// SPDX-License-Identifier: MIT
// Sets the alarms of one request one after the other, and tells of them in one sentence.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <string>
#include <vector>

namespace quorvell {

struct AlarmSeriesSteps {
    static RuleStep begin(const std::vector<std::string>& times, const std::string& name, bool isWaking,
        RequestMemory memory, const RuleSurroundings& around);
    /// Those that are left, once what they stand in for was changed, which `lead` tells.
    static RuleStep standIn(std::string lead, RequestMemory memory, const RuleSurroundings& around);
    static bool isUnderWay(const RequestMemory& memory);
    /// Behind the result of one that was set.
    static RuleStep goOn(const ToolResult& result, RequestMemory memory, const RuleSurroundings& around);
    /// Where one of them was not set: those that were are told before `step`, and no more follow.
    static RuleStep brokenOff(const AlarmTalk::Series& series, RuleStep step);
};

} // namespace quorvell
