// SPDX-License-Identifier: MIT
// Words that only make sense right after an alarm or a timer was talked about: "it", "one", "another". Pure.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/RequestMemory.h"
#include "Understanding/skills/alarms/AlarmWish.h"

#include <optional>
#include <string>

namespace quorvell {

struct AlarmFollowUp {
    /// "And another one for 25 minutes called oven", "delete the 6 am one". Never a whole request of its own.
    static std::optional<AlarmWish> read(
        const std::string& words, const RequestMemory& memory, const RuleSurroundings& around);
    /// What is done to the one last talked about: "turn it off", "call it gym", "no, 12 minutes".
    static std::optional<RuleStep> ofIt(
        const std::string& words, const RequestMemory& memory, const RuleSurroundings& around);
    /// Words of one more of what was talked about.
    static std::optional<AlarmWish> another(const std::string& words, const RequestMemory& memory);
    /// The one last talked about, to another hour or by a rule.
    /// The hour at which the one that was talked about stands, in the other half of the day.
    static std::optional<DateParts> inOtherHalf(const AlarmTalk& talk, const LocalTime& around);
    static RuleStep moveIt(const std::string& when, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
