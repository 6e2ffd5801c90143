// SPDX-License-Identifier: MIT
// What is done with the one event that was looked for.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>

namespace quorvell {

struct FoundEvent {
    /// Before the start: of a whole day, counted from nine in the morning, as reminders without an hour are.
    static RuleStep remind(
        const FoundThing& event, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around);
    /// Of what is not there: at the hour that they named with it, or as any other reminder.
    static std::optional<RuleStep> remindAnyway(
        const EventSearch& search, const RequestMemory& memory, const RuleSurroundings& around);
    static RuleStep setLength(
        const FoundThing& event, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around);
    /// The same once more, on another day.
    static RuleStep copy(
        const FoundThing& event, const EventSearch& search, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
