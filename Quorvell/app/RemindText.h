#pragma once

#include "QuorvellCore/reminders/ReminderRequest.h"

#include <string>

namespace quorvell {

/// What was understood of a reminder, for a person to read; where it cannot be set, why not and what to do.
std::string remindText(const ReminderRequest& request, Instant now, const Calendar& calendar);

} // namespace quorvell
