// SPDX-License-Identifier: MIT
#include "Quorvell/session/usage/UsageDays.h"

namespace quorvell {

void UsageDays::add(std::string_view day, double seconds)
{
    if (!(seconds > 0)) // Not a number either.
        return;
    days[std::string(day)] += seconds;
    while (days.size() > most)
        days.erase(days.begin());
}

double UsageDays::secondsOn(std::string_view day) const
{
    const auto found = days.find(day);
    return found == days.end() ? 0 : found->second;
}

double UsageDays::secondsIn(std::string_view prefix) const
{
    double sum = 0;
    for (auto day = days.lower_bound(prefix); day != days.end() && day->first.starts_with(prefix); ++day)
        sum += day->second;
    return sum;
}

} // namespace quorvell
