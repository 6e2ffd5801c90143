// SPDX-License-Identifier: MIT
// What is shown and said when reminders come due.
#pragma once

#include "Quorvell/reminding/Notifier.h"
#include "Quorvell/reminding/ReminderSchedule.h"
#include "QuorvellCore/reminders/state/ReminderChoices.h"

#include <string>
#include <vector>

namespace quorvell {

/// One or several reminders in one notice.
struct ReminderNotice {
    static constexpr const char* doneKey = "done";

    Notice notice;
    std::string announcement; ///< For the ear, and for a terminal.
    std::vector<DueReminder> reminders;
    std::vector<ReminderChoice> choices; ///< As they are offered; their keys are their titles.

    /// Of an alarm that rings now. Keyed like a single one, whose place it takes.
    static ReminderNotice ringing(const DueReminder& reminder, Instant now, const Calendar& calendar);

    /// Keyed by the note's id, so that a later occurrence takes the place of an earlier one. An alarm that comes here
    /// was missed.
    static ReminderNotice single(const DueReminder& reminder, Instant now, const Calendar& calendar);

    /// What came due while nobody could be told, gently and at once.
    static ReminderNotice summary(const std::vector<DueReminder>& reminders, Instant now, const Calendar& calendar);

    /// Until when the choice that was pressed puts it off: counted from now, not from when it was shown. A choice
    /// that is no longer offered keeps its moment while that is to come. Nothing for a key of none.
    std::optional<Instant> putOffUntil(const std::string& actionKey, Instant now, const Calendar& calendar) const;
};

} // namespace quorvell
