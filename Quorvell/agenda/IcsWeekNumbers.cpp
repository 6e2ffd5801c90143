// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsWeekNumbers.h"

#include "Quorvell/agenda/IcsByList.h"

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::chrono::days aWeek{7};
constexpr std::chrono::days toMiddleOfWeek{3}; ///< The year that has this day has most of the week.

LocalDay startOfWeek(const icalrecurrencetype& rule, LocalDay day)
{
    const int start = std::max<int>(rule.week_start, ICAL_SUNDAY_WEEKDAY); // both count Sunday as 1
    return day - std::chrono::days((Calendar::weekday(day) - start + aWeek.count()) % aWeek.count());
}

LocalDay startOfYear(const icalrecurrencetype& rule, int year)
{
    constexpr int inTheFirstWeek = 4; // of January
    return startOfWeek(rule, LocalDay(std::chrono::year(year) / std::chrono::January / inTheFirstWeek));
}

bool isNamedDay(const icalrecurrencetype& rule, LocalDay first, LocalDay day)
{
    const int weekday = Calendar::weekday(day);
    const int months = IcsByList::countOf(rule.by_month);
    const int weekdays = IcsByList::countOf(rule.by_day);
    const auto month = static_cast<unsigned>(std::chrono::year_month_day(day).month());
    const bool isInMonth = months == 0 || std::any_of(rule.by_month, rule.by_month + months, [month](short named) {
        return static_cast<unsigned>(named) == month;
    });
    const bool isOnWeekday = weekdays == 0 ? weekday == Calendar::weekday(first)
                                           : std::any_of(rule.by_day, rule.by_day + weekdays, [weekday](short named) {
                                                 return icalrecurrencetype_day_day_of_week(named) == weekday;
                                             });
    return isInMonth && isOnWeekday;
}

} // namespace

bool IcsWeekNumbers::areNamed(const icalrecurrencetype& rule)
{
    return IcsByList::countOf(rule.by_week_no) > 0;
}

bool IcsWeekNumbers::canBeFollowed(const icalrecurrencetype& rule)
{
    const int weekdays = IcsByList::countOf(rule.by_day);
    const bool hasPositions = std::any_of(
        rule.by_day, rule.by_day + weekdays, [](short named) { return icalrecurrencetype_day_position(named) != 0; });
    return rule.freq == ICAL_YEARLY_RECURRENCE && !hasPositions && IcsByList::countOf(rule.by_set_pos) == 0
        && IcsByList::countOf(rule.by_month_day) == 0 && IcsByList::countOf(rule.by_year_day) == 0
        && IcsByList::countOf(rule.by_hour) == 0 && IcsByList::countOf(rule.by_minute) == 0
        && IcsByList::countOf(rule.by_second) == 0;
}

int IcsWeekNumbers::yearOf(const icalrecurrencetype& rule, LocalDay day)
{
    return static_cast<int>(std::chrono::year_month_day(startOfWeek(rule, day) + toMiddleOfWeek).year());
}

std::vector<LocalDay> IcsWeekNumbers::days(const icalrecurrencetype& rule, LocalDay first, int year)
{
    const LocalDay start = startOfYear(rule, year);
    const int weeks = static_cast<int>((startOfYear(rule, year + 1) - start) / aWeek);
    std::vector<LocalDay> found;
    for (int index = 0; index < IcsByList::countOf(rule.by_week_no); ++index) {
        const int named = rule.by_week_no[index];
        const int number = named < 0 ? weeks + named : named - 1; // -1 is the last one
        if (number < 0 || number >= weeks)
            continue;
        const LocalDay begins = start + number * aWeek;
        for (LocalDay day = begins; day < begins + aWeek; day += std::chrono::days(1))
            if (isNamedDay(rule, first, day))
                found.push_back(day);
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

} // namespace quorvell
