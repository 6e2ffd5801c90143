// SPDX-License-Identifier: MIT
// Sets a reminder for each phrase and says what was understood.
#pragma once

#include "Quorvell/app/reminders/RemindPhrases.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

namespace quorvell {

struct ProgramEnvironment;

enum class RemindOutput { text, json };

/// Makes its own event loop. The exit code: 0 when all of them are stored, else 1.
int storeReminders(const ProgramEnvironment& environment, RemindPhrases& phrases, Instant now, const Calendar& calendar,
    RemindOutput output);

} // namespace quorvell
