// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsRule.h"

#include "Quorvell/agenda/IcsByList.h"
#include "Quorvell/agenda/IcsLimits.h"
#include "Quorvell/agenda/IcsMoment.h"
#include "Quorvell/agenda/IcsWeekNumbers.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::seconds;

constexpr int daysOfAWeek = 7;
constexpr int inEveryMonth = 28; ///< The last day that no month lacks.

bool isGiven(short value)
{
    return value != ICAL_RECURRENCE_ARRAY_MAX;
}

std::string onWeekdays(const std::vector<int>& weekdays)
{
    constexpr std::array names{"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
    std::string text = "FREQ=WEEKLY;BYDAY=";
    for (const int weekday : weekdays)
        text +=
            std::string(text.ends_with('=') ? "" : ",") + names[static_cast<std::size_t>(weekday - 1) % names.size()];
    return text;
}

/// On the last day of months that are shorter.
std::string onDayOfMonth(int day)
{
    std::string text = "FREQ=MONTHLY;BYMONTHDAY=" + std::to_string(inEveryMonth);
    for (int candidate = inEveryMonth + 1; candidate <= day; ++candidate)
        text += "," + std::to_string(candidate);
    return text + ";BYSETPOS=-1";
}

template <typename Visit> void eachRule(icalcomponent* series, const Visit& visit)
{
    for (icalproperty* property = icalcomponent_get_first_property(series, ICAL_RRULE_PROPERTY); property;
         property = icalcomponent_get_next_property(series, ICAL_RRULE_PROPERTY))
        visit(property, icalproperty_get_rrule(property));
}

/// "Every week on Mondays", without "the second of the month" and without leaving weeks out, whose count would change
/// where a day moves over the start of a week.
bool isPlainlyWeekly(const icalrecurrencetype& rule)
{
    return rule.freq == ICAL_WEEKLY_RECURRENCE && rule.interval <= 1 && !isGiven(rule.by_set_pos[0]);
}

bool namesDates(const icalrecurrencetype& rule)
{
    return isGiven(rule.by_month_day[0]) || isGiven(rule.by_month[0]) || isGiven(rule.by_year_day[0])
        || isGiven(rule.by_week_no[0]) || (isGiven(rule.by_day[0]) && !isPlainlyWeekly(rule));
}

void shiftWeekdays(icalrecurrencetype& rule, days shift)
{
    const int steps = static_cast<int>((shift.count() % daysOfAWeek + daysOfAWeek) % daysOfAWeek);
    for (short& day : rule.by_day) {
        if (!isGiven(day))
            break;
        day = static_cast<short>((icalrecurrencetype_day_day_of_week(day) - 1 + steps) % daysOfAWeek + 1); // 1 = Sunday
    }
}

/// A 30th of February would be looked for through all the years there are.
bool namesNoDayOfItsMonths(const icalrecurrencetype& rule)
{
    if (!isGiven(rule.by_month[0]) || !isGiven(rule.by_month_day[0]))
        return false;
    constexpr int leapYear = 2024;
    for (const short month : rule.by_month) {
        if (!isGiven(month))
            break;
        const int longest = Calendar::daysInMonth(leapYear, std::clamp<int>(month, 1, 12));
        for (const short day : rule.by_month_day) {
            if (!isGiven(day))
                break;
            if (std::abs(day) <= longest)
                return false;
        }
    }
    return true;
}

/// Whether the fifth Monday, or the first from the end, can fall on that day of a month; where one counts from the
/// start and one from the end, it is taken for granted.
bool canFallOn(int position, int dayOfMonth)
{
    return position == 0 || (position > 0) != (dayOfMonth > 0)
        || std::abs(position) == (std::abs(dayOfMonth) - 1) / daysOfAWeek + 1;
}

/// A fifth Monday that is the first of its month is looked for as long.
bool weekdaysMissTheirDates(const icalrecurrencetype& rule)
{
    const int dates = IcsByList::countOf(rule.by_month_day);
    const int weekdays = IcsByList::countOf(rule.by_day);
    for (int index = 0; index < weekdays; ++index)
        for (int date = 0; date < dates; ++date)
            if (canFallOn(icalrecurrencetype_day_position(rule.by_day[index]), rule.by_month_day[date]))
                return false;
    return dates > 0 && weekdays > 0;
}

/// A sixth Monday or the second last day of a month is looked for just as long.
bool namesNoDayOfAnyMonth(const icalrecurrencetype& rule)
{
    constexpr int mostOfOneWeekday = 5;
    int candidates = 0;
    bool hasDay = !isGiven(rule.by_day[0]);
    for (const short day : rule.by_day) {
        if (!isGiven(day))
            break;
        hasDay = hasDay || std::abs(icalrecurrencetype_day_position(day)) <= mostOfOneWeekday;
        candidates += mostOfOneWeekday;
    }
    for (const short day : rule.by_month_day) {
        if (!isGiven(day))
            break;
        ++candidates;
    }
    bool hasPosition = !isGiven(rule.by_set_pos[0]);
    for (const short position : rule.by_set_pos) {
        if (!isGiven(position))
            break;
        hasPosition = hasPosition || std::abs(position) <= std::max(candidates, 1);
    }
    return !hasDay || !hasPosition || weekdaysMissTheirDates(rule);
}

/// That the rule names by itself; each is tried on each day, also where conditions then take it away.
int timesOfDay(const icalrecurrencetype& rule)
{
    return std::max(IcsByList::countOf(rule.by_hour), 1) * std::max(IcsByList::countOf(rule.by_minute), 1)
        * std::max(IcsByList::countOf(rule.by_second), 1);
}

/// Of days or weeks with several times, or several days, the library would give all.
bool canPick(const icalrecurrencetype& rule)
{
    const bool isOfLongPeriods = rule.freq == ICAL_MONTHLY_RECURRENCE || rule.freq == ICAL_YEARLY_RECURRENCE;
    return isOfLongPeriods && timesOfDay(rule) == 1;
}

bool picksTheOnlyOne(const icalrecurrencetype& rule)
{
    const bool isOfShortPeriods = rule.freq == ICAL_DAILY_RECURRENCE || rule.freq == ICAL_WEEKLY_RECURRENCE;
    const auto* end = rule.by_set_pos + IcsByList::countOf(rule.by_set_pos);
    return isOfShortPeriods && timesOfDay(rule) == 1 && IcsByList::countOf(rule.by_day) <= 1
        && std::any_of(std::begin(rule.by_set_pos), end, [](short position) { return std::abs(position) == 1; });
}

} // namespace

std::string IcsRule::text(const ReminderRepeat& repeat, LocalDay first)
{
    switch (repeat.kind) {
    case ReminderRepeat::Kind::daily:
        return "FREQ=DAILY";
    case ReminderRepeat::Kind::weekdays:
        return onWeekdays({2, 3, 4, 5, 6});
    case ReminderRepeat::Kind::weekly:
        return repeat.weekdays.size() > 1 ? onWeekdays(repeat.weekdays) : "FREQ=WEEKLY";
    case ReminderRepeat::Kind::monthly:
        return repeat.dayOfMonth > inEveryMonth ? onDayOfMonth(repeat.dayOfMonth) : "FREQ=MONTHLY";
    case ReminderRepeat::Kind::yearly:
        break;
    }
    const std::chrono::year_month_day date(first);
    const bool isLeapDay = date.month() == std::chrono::February && date.day() == std::chrono::day(29);
    return isLeapDay ? "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=-1" : "FREQ=YEARLY";
}

bool IcsRule::canShift(icalcomponent* series, days shift)
{
    bool can = true;
    eachRule(series,
        [&](icalproperty*, const icalrecurrencetype& rule) { can = can && (shift == days(0) || !namesDates(rule)); });
    return can;
}

void IcsRule::shift(icalcomponent* series, seconds shift, days dayShift)
{
    eachRule(series, [&](icalproperty* property, icalrecurrencetype rule) {
        if (const auto until = IcsMoment::from(rule.until))
            rule.until = until->at(until->local + shift).time();
        shiftWeekdays(rule, dayShift);
        icalproperty_set_rrule(property, rule);
    });
}

bool IcsRule::neverComes(const icalrecurrencetype& rule)
{
    return namesNoDayOfItsMonths(rule) || (rule.freq == ICAL_MONTHLY_RECURRENCE && namesNoDayOfAnyMonth(rule));
}

bool IcsRule::canBeFollowed(const icalrecurrencetype& rule)
{
    if (timesOfDay(rule) > IcsLimits::mostTimesOfDay)
        return false;
    if (isGiven(rule.by_set_pos[0]) && !canPick(rule) && !picksTheOnlyOne(rule))
        return false;
    if (IcsWeekNumbers::areNamed(rule))
        return IcsWeekNumbers::canBeFollowed(rule);
    switch (rule.freq) {
    case ICAL_HOURLY_RECURRENCE:
        return !isGiven(rule.by_day[0]) && !isGiven(rule.by_month_day[0]) && !isGiven(rule.by_year_day[0])
            && !isGiven(rule.by_month[0]) && !isGiven(rule.by_set_pos[0]) && !isGiven(rule.by_hour[0])
            && !isGiven(rule.by_minute[0]) && !isGiven(rule.by_second[0]);
    case ICAL_DAILY_RECURRENCE:
    case ICAL_WEEKLY_RECURRENCE:
    case ICAL_MONTHLY_RECURRENCE:
    case ICAL_YEARLY_RECURRENCE:
        return true;
    default:
        return false;
    }
}

void IcsRule::simplify(icalrecurrencetype& rule)
{
    IcsByList::sort(rule.by_hour);
    IcsByList::sort(rule.by_minute);
    IcsByList::sort(rule.by_second);
    if (picksTheOnlyOne(rule))
        rule.by_set_pos[0] = ICAL_RECURRENCE_ARRAY_MAX;
    if (rule.freq == ICAL_MONTHLY_RECURRENCE || rule.freq == ICAL_YEARLY_RECURRENCE)
        return;
    for (short& day : rule.by_day) {
        if (!isGiven(day))
            break;
        day = static_cast<short>(icalrecurrencetype_day_day_of_week(day));
    }
}

} // namespace quorvell
