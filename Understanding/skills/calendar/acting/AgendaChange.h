// SPDX-License-Identifier: MIT
// Moves, cancels and tells of events that are in the calendar already: they are looked up first.
#pragma once

#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/skills/calendar/reading/AgendaIntent.h"

#include <optional>
#include <vector>

namespace quorvell {

struct AgendaChange {
    static const QuestionKind newTime; ///< When the event is to be instead.
    static const QuestionKind whichEvent; ///< Of those found.
    static const QuestionKind occurrences; ///< One time of the event found, or all of its series.
    static const QuestionKind whichStart; ///< Of the times that the words may mean, for the event found.

    /// What an intent to move, cancel or tell of an event wishes of it.
    static Wish wishIn(const AgendaIntent& intent, const RequestMemory& memory);
    /// Moves or cancels what is named, or what was talked about.
    static RuleStep make(const AgendaIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// After whats_on: nothing where no event was looked for.
    static std::optional<RuleStep> afterList(
        std::vector<FoundThing> listed, RequestMemory memory, const RuleSurroundings& around);
    /// Does as was wished; of an event that repeats it may have to be asked first how much is meant.
    static RuleStep carryOut(const FoundThing& event, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
