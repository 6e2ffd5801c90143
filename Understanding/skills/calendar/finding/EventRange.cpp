// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/EventRange.h"

#include <chrono>

namespace quorvell {

namespace {

using Aim = EventSearch::Aim;

constexpr int daysOfYear = 365;
constexpr int daysOfMonth = 31;

DateParts dayFromNow(int days, const LocalTime& around)
{
    return DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(days)), around.calendar);
}

/// What is beside it counts as well.
bool needsAll(const EventSearch& search)
{
    return !search.anchor.empty() || search.aim == Aim::clashes || search.aim == Aim::repeats;
}

} // namespace

SpokenDays EventRange::of(const EventSearch& search, const LocalTime& around)
{
    if (search.days)
        return *search.days;
    if (search.isBack)
        return {
            dayFromNow(search.isWide ? -daysOfYear : -daysOfMonth, around), dayFromNow(0, around), "in the last year"};
    if ((search.name.empty() && !search.isWide) || needsAll(search))
        return SpokenDays::ahead(around);
    return {dayFromNow(0, around), dayFromNow(daysOfYear, around), "in the next year"};
}

SpokenDays EventRange::today(const LocalTime& around)
{
    return {dayFromNow(0, around), dayFromNow(0, around), "today"};
}

bool EventRange::isByWords(const EventSearch& search)
{
    return !search.name.empty() && !search.days && !needsAll(search) && (!search.isBack || search.isWide);
}

} // namespace quorvell
