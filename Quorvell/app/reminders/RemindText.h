// SPDX-License-Identifier: MIT
// What was understood of a reminder, for a person to read; where it cannot be set, why not and what to do.
#pragma once

#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include <string>

namespace quorvell {

std::string remindText(const ReminderRequest& request, Instant now, const Calendar& calendar);

} // namespace quorvell
