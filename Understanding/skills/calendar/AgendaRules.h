// SPDX-License-Identifier: MIT
// What the calendar is asked, and what follows from its answers.
#pragma once

#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/Request.h"
#include "Understanding/skills/calendar/reading/AgendaIntent.h"

#include <optional>

namespace quorvell {

struct AgendaRules {
    /// What is said where a series should come otherwise.
    static constexpr const char* ruleIsFixed =
        "I cannot change how often an event comes. Please delete it and put it into your calendar again.";

    static const QuestionKind when; ///< The event of that title is.
    static const QuestionKind whichDay; ///< Of two that the words named.
    static const QuestionKind howOften; ///< The event comes back.
    static const QuestionKind title; ///< Of the event at that time.

    static Request request(AgendaIntent intent);
    static RuleStep answer(const AgendaIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// What was named alone and is not there: whether it should be.
    static RuleStep offerNew(const EventSearch& search, RequestMemory memory);
    /// Another time for the event last talked about, or a further day to ask the calendar about.
    static std::optional<RuleStep> retime(const Wish& wish, RequestMemory memory, const RuleSurroundings& around);
    static RuleStep changeListed(
        const Wish& wish, const FoundThing& event, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
