// SPDX-License-Identifier: MIT
// What a conversation remembers of how a call came out.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/RuleStep.h"

namespace quorvell {

struct ResultMarks {
    /// The one day that the calendar was asked about: "is tuesday free?", then "ok, then at 4".
    static void askedDay(const ToolRequest& call, const RequestMemory& before, RuleStep& step);
    /// That what was wished for was not done, so that "undo that" takes nothing older back unasked.
    static void failure(const ToolResult& result, const RequestMemory& before, RuleStep& step);
};

} // namespace quorvell
