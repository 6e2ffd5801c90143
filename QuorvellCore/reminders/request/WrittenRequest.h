// SPDX-License-Identifier: MIT
// The words of a request as the readers of times know them: slips put right, what is said written, days worked out.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <string>
#include <string_view>

namespace quorvell {

std::string writtenRequest(std::string_view words, Instant now, const Calendar& calendar);

} // namespace quorvell
