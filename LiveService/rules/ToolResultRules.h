// SPDX-License-Identifier: MIT
// What a tool's result leaves to be remembered.
#pragma once

#include "LiveService/rules/RequestMemory.h"
#include "LiveService/rules/ToolRequest.h"

#include <string_view>
#include <vector>

namespace quorvell {

/// Results come from outside: what cannot be read is left out.
struct ToolResultRules {
    /// The open question of a set_reminder call's result, if it asks one. `question` is how it was worded.
    static PendingQuestion questionIn(const ToolRequest& call, std::string_view result, std::string_view question);
    static std::vector<FoundThing> notesIn(std::string_view result);
    /// What whats_on tells: events, and reminders among them.
    static std::vector<FoundThing> agendaIn(std::string_view result);
    /// The reminders that a set_reminder call's result lists.
    static std::vector<FoundThing> remindersIn(std::string_view result);
    struct Reminder {
        std::string id;
        std::string date; ///< In the form of the tools' dates; empty when it was not told.
    };
    /// The only reminder that a set_reminder call's result tells of; empty when it tells of none or several.
    static Reminder reminderIn(std::string_view result);
    /// The event that was added or changed; empty when it is gone, or nothing was done.
    static FoundThing eventIn(std::string_view result);
    /// Whether a reminder is done for good.
    static bool endsReminder(std::string_view result);
    /// Whether it failed without saying which reminder was meant: it looked for what is due.
    static bool foundNothingDue(const ToolRequest& call, std::string_view result);
    /// What a call that was not carried out asks first: whether it really should be, or which reminder is meant.
    /// Nothing when it asks nothing.
    static PendingQuestion questionOf(const ToolRequest& call, std::string_view result, std::string_view question);
};

} // namespace quorvell
