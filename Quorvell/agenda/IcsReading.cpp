// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsReading.h"

#include "Quorvell/agenda/IcsLimits.h"

namespace quorvell {

IcsOmissions& IcsOmissions::operator|=(const IcsOmissions& other)
{
    repeats |= other.repeats;
    zones |= other.zones;
    amount |= other.amount;
    time |= other.time;
    return *this;
}

std::vector<std::string> IcsOmissions::sentences(const std::string& calendar) const
{
    std::vector<std::string> told;
    if (repeats)
        told.push_back(
            calendar + " holds an event that repeats in a way that cannot be followed; some of its times are missing.");
    if (zones)
        told.push_back(
            calendar + " describes a time zone that changes too often to be followed; its times may be wrong.");
    if (amount)
        told.push_back(calendar + " holds more than " + std::to_string(IcsLimits::mostOccurrences)
            + " events in that time; the others are missing.");
    if (time)
        told.push_back(calendar + " took too long to read; events may be missing.");
    return told;
}

} // namespace quorvell
