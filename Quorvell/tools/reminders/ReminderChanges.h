// SPDX-License-Identifier: MIT
// Which reminder is meant, and what done and later make of it.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The reminders that are pending, the overdue ones first, those for the user's return last. `isVisible` alone counts
/// where the model asks.
enum class ReminderAudience { user, model };
std::vector<Note> pendingReminders(const std::vector<Note>& notes, ReminderAudience audience);

/// The pending reminders that are meant: by the id or its beginning, else by words of their tasks, else those that are
/// due.
std::vector<Note> meantReminders(
    const std::vector<Note>& pending, std::string_view id, std::string_view words, Instant now);

/// Until when words such as "in an hour", "this evening", "later" or "friday at 3 pm" put a reminder off. "By an
/// hour" counts from its own time where that is still to come. Ready with a date, or what is to be asked.
ReminderRequest putOffRequest(std::string_view words, Instant now, const Calendar& calendar, Instant own = {});

} // namespace quorvell
