// SPDX-License-Identifier: MIT
// The wording of set_reminder's results.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/memory/RequestMemory.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct ReminderReply {
    /// What the words could mean, where that is asked.
    static std::vector<TimeChoice> choices(const Json& result);
    /// What is clear of a time of which the rest is asked for.
    static SettledTime settled(const Json& result);
    /// `userWords` are those of the request; they tell "to call Anna" from "about Anna".
    static std::string reply(const ToolResult& result, std::string_view userWords);
    /// Of one that is done because they do not want it, or not this time.
    static std::string cancelled(const ToolResult& result, std::string_view userWords);
    /// The reminders of the days that were asked about.
    static std::string list(const Json& result, const RequestMemory& memory, const LocalTime& around);
    /// Behind "I": "set a reminder to call Ana, on Sunday the 22nd of November at 5 PM". Empty for what changed
    /// nothing.
    static std::string whatWasDone(const ToolRequest& call, const ToolResult& result);
};

} // namespace quorvell
