// SPDX-License-Identifier: MIT
// Notes that are thrown away: one at a time, asked about first.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/Request.h"
#include "Understanding/words/RequestReading.h"

#include <optional>
#include <string>

namespace quorvell {

struct NoteRemoving {
    /// "Delete that note", "delete my note about tea". Nothing where no note is named.
    static std::optional<Request> read(const RequestReading& reading);
    /// The only note that was told, found or kept last; else it is asked which.
    static RuleStep removeFound(RequestMemory memory, const RuleSurroundings& around);
    static RuleStep ask(const FoundThing& note, RequestMemory memory, const RuleSurroundings& around);
    /// What was found for a wish to throw it away.
    static RuleStep takeFound(const std::string& query, RequestMemory memory, const RuleSurroundings& around);
    static RuleStep takeDeleted(const ToolResult& result, RequestMemory memory);
};

} // namespace quorvell
