// SPDX-License-Identifier: MIT
// What the calendar is asked, and what follows from its answers.
#pragma once

#include "LiveService/rules/AgendaIntent.h"
#include "LiveService/rules/RuleStep.h"
#include "LiveService/rules/ToolRequests.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct AgendaRules {
    static RuleStep answer(const AgendaIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// After whats_on: the event that is to be moved or cancelled, when it was asked for that.
    static std::optional<RuleStep> afterList(
        std::string_view result, RequestMemory memory, const RuleSurroundings& around);
    /// Moves or cancels the event as was wished; of one that repeats it may have to be asked first how much is meant.
    static RuleStep carryOut(const FoundThing& event, RequestMemory memory, const RuleSurroundings& around);
    /// Does with a reminder what was wished of an event.
    static ToolRequests::Answer changeReminder(
        const std::string& task, const EventWish& wish, const RuleSurroundings& around);
};

} // namespace quorvell
