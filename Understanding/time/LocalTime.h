// SPDX-License-Identifier: MIT
// When and where words are said: what a time in them is read against.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

namespace quorvell {

struct LocalTime {
    Instant now{};
    Calendar calendar; ///< Of this computer.
};

} // namespace quorvell
