// SPDX-License-Identifier: MIT
// What a phrase of `quorvell remind` asks for, the hour settled where that is possible.
#pragma once

#include "Quorvell/app/reminders/WhichTime.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Who is not there to be asked is a script (`whichTime` is empty), and scripts write hours as programs print them.
ReminderRequest remindRequest(
    const std::string& phrase, Instant now, const Calendar& calendar, const WhichTime& whichTime);

/// The one of the choices that "10:30" or "05:30" names by the 24-hour clock: two digits, a colon, two digits. Nothing
/// where no such time is written, or more than one.
std::optional<Instant> writtenTime(
    std::string_view words, const std::vector<Instant>& choices, const Calendar& calendar);

} // namespace quorvell
