#pragma once

#include "LiveService/rules/AgendaIntent.h"
#include "LiveService/rules/RuleStep.h"
#include "LiveService/rules/ToolRequests.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// What the calendar is asked, and what follows from its answers.
struct AgendaRules {
    static RuleStep answer(const AgendaIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// After whats_on: the event that is to be moved or cancelled, when it was asked for that.
    static std::optional<RuleStep> afterList(
        std::string_view result, RequestMemory memory, const RuleSurroundings& around);
    /// Moves or cancels the event at `index` of those found. Nothing when the new time cannot be understood.
    static std::optional<ToolRequests::Answer> carryOut(
        const RequestMemory& memory, std::size_t index, const RuleSurroundings& around);
    /// The event among those found that the words name; nothing when none or several do.
    static std::optional<std::size_t> named(const std::vector<FoundEvent>& events, std::string_view words);
};

} // namespace quorvell
