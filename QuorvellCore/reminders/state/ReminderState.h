// SPDX-License-Identifier: MIT
// When a note's reminder is pending or due, and what finishing or putting it off changes.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

namespace quorvell {

/// The note's other fields, `updated` among them, are the store's business.
struct ReminderState {
    static bool isPending(const Note& note);
    static bool isDue(const Note& note, Instant now);

    /// A repeating reminder moves to its next occurrence after now and is pending again.
    static void done(Note& note, Instant now, const Calendar& calendar);
    static void later(Note& note, Instant to);
    static void whenBack(Note& note);

    /// The user is back at the computer: a reminder that waited for this is due at once.
    static void cameBack(Note& note, Instant now);
};

} // namespace quorvell
