// SPDX-License-Identifier: MIT
// Looks for events by name, kind and day, and tells of them, deletes them or does something else with what is found.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/Request.h"
#include "Understanding/dialogue/memory/EventSearch.h"

#include <string>
#include <vector>

namespace quorvell {

struct EventLookup {
    static const QuestionKind whichDays; ///< Are meant, where nobody named any that could be understood.
    static const QuestionKind whichEvent; ///< Of those found.
    static const QuestionKind value; ///< The new name or place of the event.

    /// `core` has the name as they spelled it.
    static Request request(EventSearch search, const std::string& core);
    static RuleStep begin(EventSearch search, RequestMemory memory, const RuleSurroundings& around);
    /// After an event was put in for which they wished a reminder too: `said`, and whether that should be set.
    static RuleStep offerReminder(std::string said, int minutes, RequestMemory memory, const RuleSurroundings& around);
    /// After whats_on, where something is looked for. `listed` is all that it told, with `result`.
    static RuleStep take(
        std::vector<FoundThing> listed, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
