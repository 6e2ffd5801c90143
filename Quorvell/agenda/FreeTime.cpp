// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/FreeTime.h"

#include <algorithm>

namespace quorvell {

namespace {

/// Clocks everywhere show quarters of an hour at the same instants.
Instant roundedUp(Instant moment)
{
    constexpr std::chrono::minutes quarter{15};
    const auto over = moment.time_since_epoch() % quarter;
    return over.count() == 0 ? moment : moment - over + quarter;
}

std::vector<FreeTime> busyTimes(const std::vector<CalendarEvent>& events)
{
    std::vector<FreeTime> busy;
    for (const CalendarEvent& event : events)
        if (event.isBusy && !event.allDay && event.end > event.start)
            busy.push_back({event.start, event.end});
    std::sort(
        busy.begin(), busy.end(), [](const FreeTime& left, const FreeTime& right) { return left.start < right.start; });
    return busy;
}

} // namespace

std::vector<FreeTime> FreeTime::find(
    const std::vector<CalendarEvent>& events, const Wish& wish, const Calendar& calendar)
{
    constexpr int mostDays = 400;
    const auto busy = busyTimes(events);
    std::vector<FreeTime> found;
    const auto offer = [&](Instant from, Instant until) {
        from = roundedUp(from);
        if (until - from >= wish.length && found.size() < wish.most)
            found.push_back({from, until});
    };
    LocalDay day = calendar.day(wish.from) - std::chrono::days(1); // whose waking hours may last beyond midnight
    for (int count = 0; count < mostDays && found.size() < wish.most; ++count, day += std::chrono::days(1)) {
        const Instant end = std::min(wish.to, calendar.instant(day, wish.waking.to));
        Instant free = std::max(wish.from, calendar.instant(day, wish.waking.from));
        if (calendar.instant(day, std::chrono::hours(0)) >= wish.to)
            break;
        for (const FreeTime& taken : busy) {
            if (taken.start >= end)
                break;
            if (taken.end <= free)
                continue;
            offer(free, std::min(taken.start, end));
            free = std::max(free, taken.end);
        }
        offer(free, end);
    }
    return found;
}

} // namespace quorvell
