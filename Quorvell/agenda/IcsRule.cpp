// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsRule.h"

#include "Quorvell/agenda/IcsMoment.h"

#include <array>

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

} // namespace quorvell
