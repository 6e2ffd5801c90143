// SPDX-License-Identifier: MIT
// Moments and calendars as tests write them.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <string_view>

namespace quorvell {

inline Instant at(std::string_view iso)
{
    return parseIsoText(iso).value_or(Instant());
}

inline Calendar berlin()
{
    return *Calendar::create("Europe/Berlin", "en_GB");
}

} // namespace quorvell
