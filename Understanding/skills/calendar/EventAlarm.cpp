// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/EventAlarm.h"

#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/AlarmWishReader.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"

#include <chrono>
#include <utility>

namespace quorvell {

std::optional<Request> EventAlarm::read(const std::string& core, const RuleSurroundings& around)
{
    const auto wish = AlarmWishReader::read(core);
    if (!wish || wish->kind != AlarmWish::Kind::before || AlarmTraits::namesAlarm(wish->which)
        || !around.offers(AlarmCalls::tool))
        return std::nullopt;
    EventSearch search =
        CalendarWords::search(CalendarWords::of(wish->which).plain, around).value_or(EventSearch{.name = wish->which});
    search.aim = EventSearch::Aim::remind;
    search.isAll = false;
    search.rings = true;
    search.minutes = static_cast<int>(std::chrono::floor<std::chrono::minutes>(wish->length).count());
    return EventLookup::request(std::move(search), core);
}

} // namespace quorvell
