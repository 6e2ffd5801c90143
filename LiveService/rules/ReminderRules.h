// SPDX-License-Identifier: MIT
// What the owner of reminders is asked.
#pragma once

#include "LiveService/rules/ReminderChange.h"
#include "LiveService/rules/ReminderIntent.h"
#include "LiveService/rules/RuleStep.h"

#include <string_view>

namespace quorvell {

struct ReminderRules {
    static RuleStep set(const ReminderIntent& intent, RequestMemory memory, const RuleSurroundings& around);
    /// Where no reminder is named, what was last talked about is meant: it may be an event.
    static RuleStep change(const ReminderChange& change, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
