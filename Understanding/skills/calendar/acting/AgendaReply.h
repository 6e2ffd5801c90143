// SPDX-License-Identifier: MIT
// The wording of the calendar tools' results.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/memory/RequestMemory.h"
#include "Understanding/dialogue/memory/ToolRequest.h"

#include <string>
#include <vector>

namespace quorvell {

struct AgendaReply {
    /// "Lunch with Ana, on Friday the 27th of November at 1 PM".
    static std::string named(const FoundThing& thing);
    /// What comes first of `events`, which are in order.
    /// "Should I put Lunch into your calendar, on Friday ...?", of a call that adds it.
    static std::string offer(const Json& arguments);
    static std::string next(const std::vector<FoundThing>& events);
    /// Told where the result holds problems; not behind a question, which is to be answered first.
    static constexpr const char* notWhole = " Not all of your calendar could be read, so there may be more.";
    static std::string withUnread(std::string said, const Json& result);
    /// The first of them, a sentence each, and how many more there are. `days` are those that were asked about.
    static std::string sentences(
        const std::vector<Json>& items, const std::optional<SpokenDays>& days, const LocalTime& around);
    /// The user's own words for the days, behind other words: " on Friday".
    static std::string daysBehind(const std::string& days);
    /// Behind "I": "put Lunch into your calendar, on Friday the 27th of November at 1 PM". Empty for no change.
    static std::string done(const ToolRequest& call, const ToolResult& result);
    /// `call` is one of "whats_on", "find_free_time", "add_event" or "change_event".
    static std::string reply(
        const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const LocalTime& around);
};

} // namespace quorvell
