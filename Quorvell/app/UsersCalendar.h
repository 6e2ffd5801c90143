#pragma once

#include "QuorvellCore/reminders/Calendar.h"

#include <iosfwd>
#include <optional>

namespace quorvell {

struct ProgramEnvironment;

/// The days of the user of this computer. Nothing where their zone is unknown, which is then told.
std::optional<Calendar> usersCalendar(const ProgramEnvironment& environment, std::ostream& complaints);

} // namespace quorvell
