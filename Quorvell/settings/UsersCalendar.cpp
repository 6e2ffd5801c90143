// SPDX-License-Identifier: MIT
#include "Quorvell/settings/UsersCalendar.h"

#include "Quorvell/files/SystemZone.h"
#include "Quorvell/settings/ProgramEnvironment.h"

#include <ostream>

namespace quorvell {

std::optional<Calendar> calendarIn(const std::string& zone, const std::string& locale)
{
    return Calendar::create(zone, locale, systemZoneFile(zone));
}

std::optional<Calendar> usersCalendar(const ProgramEnvironment& environment, std::ostream& complaints)
{
    auto calendar = calendarIn(environment.timeZone, environment.locale);
    if (!calendar)
        complaints << environment.unknownTimeZone() << std::endl;
    return calendar;
}

} // namespace quorvell
