// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsZoneRules.h"

#include "Quorvell/agenda/IcsByList.h"
#include "Quorvell/agenda/IcsLimits.h"

#include <algorithm>
#include <cstdint>

namespace quorvell {

namespace {

constexpr std::int64_t tooMany = IcsLimits::mostZoneChanges + 1;

/// Days of a month, or of a year where the rule names no month.
int weekdaysOf(const icalrecurrencetype& rule, int weeks)
{
    int days = 0;
    for (int index = 0; index < IcsByList::countOf(rule.by_day); ++index)
        days += icalrecurrencetype_day_position(rule.by_day[index]) != 0 ? 1 : weeks;
    return days;
}

/// At most; rules of real zones name one day of one month, some as the Sunday among seven dates.
int changesOfAYear(const icalrecurrencetype& rule)
{
    constexpr int monthsOfAYear = 12;
    constexpr int weeksOfAYear = 53;
    constexpr int weeksOfAMonth = 5;
    constexpr int daysOfAWeek = 7;
    const int months = IcsByList::countOf(rule.by_month);
    const int dates = IcsByList::countOf(rule.by_month_day);
    const int weekdays = weekdaysOf(rule, months > 0 ? weeksOfAMonth : weeksOfAYear);
    const int days = dates > 0 ? (months > 0 ? months : monthsOfAYear) * dates : std::max(months, 1) * weekdays;
    return std::max({1, months, days, IcsByList::countOf(rule.by_year_day),
        IcsByList::countOf(rule.by_week_no) * std::max(weekdays, daysOfAWeek)});
}

std::int64_t changesOf(const icalrecurrencetype& rule, int firstYear, int lastYear)
{
    if (rule.freq != ICAL_YEARLY_RECURRENCE
        || IcsByList::countOf(rule.by_hour) + IcsByList::countOf(rule.by_minute) + IcsByList::countOf(rule.by_second)
            > 0)
        return tooMany;
    const bool hasEnd = icaltime_is_null_time(rule.until) == 0;
    const int last = hasEnd ? std::min(rule.until.year, lastYear) : lastYear;
    // A year that brings no change takes its time as well.
    const std::int64_t years = std::max(last - std::max(firstYear, 0) + 1, 1);
    return years * changesOfAYear(rule);
}

/// Of one time that the zone has, standard or daylight.
std::int64_t changesOf(icalcomponent* observance, int lastYear)
{
    icalproperty* start = icalcomponent_get_first_property(observance, ICAL_DTSTART_PROPERTY);
    const int firstYear = start ? icalproperty_get_dtstart(start).year : 0;
    std::int64_t changes = 1 + icalcomponent_count_properties(observance, ICAL_RDATE_PROPERTY);
    for (icalproperty* rule = icalcomponent_get_first_property(observance, ICAL_RRULE_PROPERTY);
         rule && changes < tooMany; rule = icalcomponent_get_next_property(observance, ICAL_RRULE_PROPERTY))
        changes += changesOf(icalproperty_get_rrule(rule), firstYear, lastYear);
    return changes;
}

} // namespace

bool IcsZoneRules::canBeFollowed(icalcomponent* zone, int lastYear)
{
    std::int64_t changes = 0;
    for (icalcomponent* observance = zone ? icalcomponent_get_first_component(zone, ICAL_ANY_COMPONENT) : nullptr;
         observance && changes < tooMany; observance = icalcomponent_get_next_component(zone, ICAL_ANY_COMPONENT))
        changes += changesOf(observance, lastYear);
    return changes < tooMany;
}

} // namespace quorvell
