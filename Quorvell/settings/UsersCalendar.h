// SPDX-License-Identifier: MIT
// The calendar that the user of this computer lives by.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace quorvell {

struct ProgramEnvironment;

/// By the rules of the computer's own time zone database.
/// Nothing for a zone that is not known.
std::optional<Calendar> calendarIn(const std::string& zone, const std::string& locale);

/// The days of the user of this computer. Nothing where their zone is unknown, which is then told.
std::optional<Calendar> usersCalendar(const ProgramEnvironment& environment, std::ostream& complaints);

} // namespace quorvell
