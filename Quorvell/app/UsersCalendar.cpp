#include "Quorvell/app/UsersCalendar.h"

#include "Quorvell/app/ProgramEnvironment.h"

#include <ostream>

namespace quorvell {

std::optional<Calendar> usersCalendar(const ProgramEnvironment& environment, std::ostream& complaints)
{
    auto calendar = Calendar::create(environment.timeZone, environment.locale);
    if (!calendar)
        complaints << environment.unknownTimeZone() << std::endl;
    return calendar;
}

} // namespace quorvell
