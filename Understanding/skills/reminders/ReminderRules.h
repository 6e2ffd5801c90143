// SPDX-License-Identifier: MIT
// What the owner of reminders is asked.
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/skills/reminders/ReminderChange.h"
#include "Understanding/skills/reminders/ReminderIntent.h"

#include <optional>

namespace quorvell {

struct ReminderRules {
    static Request request(ReminderIntent intent);
    static Request request(ReminderChange change);
    /// Of what was talked about, whatever skill that is a matter of; else of what is due, or a question.
    static Request followUp(Wish wish);

    /// "And at 8 pm", right behind one that was set: the same once more. Nothing for anything else.
    static std::optional<RuleStep> onceMore(
        const std::string& words, const RequestMemory& memory, const RuleSurroundings& around);
    static RuleStep set(const ReminderIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    static RuleStep change(const ReminderChange& change, RequestMemory memory, const RuleSurroundings& around);
    /// What is wished of a thing, done with the reminder of that name.
    static RuleStep carryOut(const Wish& wish, RequestMemory memory, const RuleSurroundings& around);
    /// To another time by its name, as the words stand.
    static RuleStep putOff(const Wish& wish, RequestMemory memory, const RuleSurroundings& around);
    /// The same with one that is known. The hour stays where only a day is named, and the day where only an hour is.
    static RuleStep carryOutWith(
        const FoundThing& reminder, const Wish& wish, RequestMemory memory, const RuleSurroundings& around);
    /// Another time for the one last talked about. Nothing for a length of time from now: then what is due is meant.
    static std::optional<RuleStep> retime(const Wish& wish, RequestMemory memory, const RuleSurroundings& around);
    /// A length of time ("in a day", "later") for the one last talked about, which is not due yet: from now where that
    /// is later than its own time, else from either, which is asked. Nothing where it says something else, or where it
    /// is not known when the reminder is.
    static std::optional<RuleStep> putOffAhead(
        const std::string& later, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
