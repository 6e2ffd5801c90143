// SPDX-License-Identifier: MIT
// What is looked up in all lists at once, and what follows from it.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/ToolRequest.h"
#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>

namespace quorvell {

struct ListLookup {
    /// Nothing for what is asked of one list.
    static std::optional<RuleStep> answer(
        const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// "We need milk" wishes for nothing yet: where it is on a list that is said, else it is asked.
    static RuleStep offerToBuy(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// "I have enough milk": where it is on a list, it is asked whether it should go.
    static RuleStep offerToSpare(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// "Add cheese": which lists there are for it.
    static RuleStep whereTo(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// "Remove eggs", "mark the plumber as done", "I paid the electric bill", where neither calendar nor reminders know
    /// it. `said` is what is said where no list does, either. Nothing for other words.
    static std::optional<RuleStep> further(
        const std::string& said, const RequestMemory& memory, const RuleSurroundings& around);

    static RuleStep take(
        const Json& arguments, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around);
    /// What was to be changed is not on the list that was named, or on none.
    static RuleStep takeMissing(const Json& arguments, const ToolResult& result, RequestMemory memory);
    /// One list after the other goes, once the user agreed; nothing for any other call.
    static std::optional<RuleStep> goOn(
        const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
