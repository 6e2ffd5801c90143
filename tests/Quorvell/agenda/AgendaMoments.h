// SPDX-License-Identifier: MIT
// The moment and the place in which these tests look at a calendar.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

namespace quorvell::test {

inline Instant at(const char* iso)
{
    return parseIsoText(iso).value_or(Instant());
}

inline Calendar berlin()
{
    return *Calendar::create("Europe/Berlin", "en_GB");
}

inline const Instant now = at("2026-11-21T09:00:00Z");

} // namespace quorvell::test
