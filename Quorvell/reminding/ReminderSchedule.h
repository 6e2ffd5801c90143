// SPDX-License-Identifier: MIT
// When the reminders of a notebook fire. Pure. What has fired is kept in the note itself: `reviewed` is the occurrence
// that was shown last, so that no restart and no clock that was set fires it a second time.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>
#include <vector>

namespace quorvell {

/// An occurrence whose time has come and that was never shown.
struct DueReminder {
    Note note;
    Instant occurrence{}; ///< Of a repeating one the latest; `remindAt` may lie further back.

    bool operator==(const DueReminder&) const = default;
};

struct ReminderSchedule {
    /// In the order of their times. Of the occurrences that a repeating reminder missed only the latest counts.
    static std::vector<DueReminder> due(const std::vector<Note>& notes, Instant now, const Calendar& calendar);

    /// When the next one comes due; `now` when some are.
    static std::optional<Instant> nextAlarm(const std::vector<Note>& notes, Instant now, const Calendar& calendar);

    static void markShown(Note& note, Instant occurrence) { note.reviewed = occurrence; }

    /// Ticks it off. One that is done before its time is over, too.
    static void finish(Note& note, Instant now, const Calendar& calendar);

    /// Pending until the user is back at the computer.
    static bool waitsForReturn(const Note& note);
};

} // namespace quorvell
