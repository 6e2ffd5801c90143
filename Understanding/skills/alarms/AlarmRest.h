// SPDX-License-Identifier: MIT
// Alarms that repeat and are not to ring on some days, or at another hour on one of them.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/skills/alarms/AlarmItem.h"
#include "Understanding/time/SpokenDays.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct AlarmRest {
    /// They rest up to the end of the days. For later days single ones stand in until then; where those would be too
    /// many, it is asked whether they should be cancelled for good.
    static RuleStep forDays(const std::vector<AlarmItem>& items, const SpokenDays& days, RequestMemory memory,
        const RuleSurroundings& around);
    /// "The 7 am alarm to 8 for tomorrow": it rests on that day, and another one rings. Nothing for any other time.
    static std::optional<RuleStep> moveOnce(
        const AlarmItem& item, const std::string& when, RequestMemory memory, const RuleSurroundings& around);
    /// That call, after a yes.
    static RuleStep askFirst(const ToolCalls::Answer& call, std::string question, RequestMemory memory);
    static std::vector<std::string> idsOf(const std::vector<AlarmItem>& items);
};

} // namespace quorvell
