// SPDX-License-Identifier: MIT
// Days that have to be worked out from the calendar, rewritten as dates: "the first monday of may" becomes
// "on 2027-05-03", "two weeks from friday", "the end of the month", "the 5th of next month" and "christmas eve"
// likewise.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <optional>
#include <string>

namespace quorvell {

/// Nothing where no word changes. Numbers and simple dates have to be written already (SpokenDates).
std::optional<std::string> withWorkedOutDays(const RequestWording& wording, LocalDay today);

} // namespace quorvell
