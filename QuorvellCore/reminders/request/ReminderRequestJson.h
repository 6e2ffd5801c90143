// SPDX-License-Identifier: MIT
// What a request would set, or ask, as a script reads it: docs/formats/reminder-phrases.md.
#pragma once

#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/text/Json.h"

namespace quorvell {

Json requestJson(const ReminderRequest& request, const Calendar& calendar);

} // namespace quorvell
