// SPDX-License-Identifier: MIT
// What is said about alarms and timers.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/memory/RequestMemory.h"
#include "Understanding/dialogue/memory/ToolRequest.h"
#include "Understanding/skills/alarms/AlarmItem.h"
#include "Understanding/skills/alarms/AlarmsMeant.h"
#include "Understanding/time/LocalTime.h"

#include <string>
#include <vector>

namespace quorvell {

struct AlarmReply {
    /// Of what was set or changed.
    static std::string changed(
        const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const LocalTime& around);
    /// Of what ended or was silenced.
    static std::string ended(
        const ToolRequest& call, const ToolResult& result, const AlarmTalk& talk, const LocalTime& around);
    /// Of several.
    static std::string cancelled(const std::vector<AlarmItem>& items, const LocalTime& around);
    /// Of several that ring again behind these days, or rang only once.
    static std::string rested(const std::vector<AlarmItem>& items, const SpokenDays& days, const LocalTime& around);
    static std::string areOn(const std::vector<AlarmItem>& items, const LocalTime& around);
    static std::string asked(const ToolResult& result, const LocalTime& around);
    /// "You have 2 alarms: 7 AM tomorrow; Gym, 6:45 AM every weekday."
    static std::string list(
        const std::vector<AlarmItem>& items, const AlarmsMeant& meant, bool isOfTimers, const LocalTime& around);
    /// "The pasta timer has 4 minutes and 10 seconds left." Of all of them, where none of those that are meant is
    /// there. Of alarms the first one: "The alarm for 7 AM tomorrow rings in 8 hours."
    static std::string left(
        const std::vector<AlarmItem>& items, const AlarmsMeant& meant, const AlarmTalk& wish, const LocalTime& around);
    static std::string left(const std::vector<AlarmItem>& items, bool saysEnd, const LocalTime& around);
    static std::string joined(const std::vector<AlarmItem>& items, const LocalTime& around);
    /// Behind "I".
    static std::string whatWasDone(const ToolRequest& call, const ToolResult& result);
};

} // namespace quorvell
