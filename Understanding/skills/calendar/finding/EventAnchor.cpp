// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/EventAnchor.h"

#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/time/SpokenWhen.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

namespace quorvell {

namespace {

/// When it begins and ends; both are the same where nobody knows how long it lasts.
struct Bounds {
    DateParts start{};
    DateParts end{};
    std::string words{};
    std::string id{};
};

std::string onDay(const DateParts& day)
{
    return ", " + SpokenWhen::on(SpokenWhen::date(day.wholeDay()));
}

std::optional<Bounds> eventNamed(
    const std::vector<FoundThing>& listed, const std::string& name, const LocalTime& around)
{
    std::vector<FoundThing> events;
    std::ranges::copy_if(listed, std::back_inserter(events), [](const FoundThing& thing) {
        return thing.skill == AgendaCalls::skill && thing.start && !thing.start->allDay;
    });
    auto found = EventName::fitting(events, name);
    if (found.empty())
        found = EventName::alike(events, name);
    if (found.empty())
        return std::nullopt;
    const DateParts now = DateParts::from(around.now, around.calendar);
    const auto coming =
        std::ranges::find_if(found, [&](const FoundThing& event) { return event.end.value_or(*event.start) >= now; });
    const FoundThing event = coming != found.end() ? *coming : found.front();
    return Bounds{*event.start, event.end.value_or(*event.start), event.title + onDay(*event.start), event.id};
}

/// Lunch is a time of the day even where nobody put it down.
std::optional<Bounds> usualLunch(const EventSearch& search, const LocalTime& around)
{
    constexpr int noon = 12 * 60;
    constexpr int one = 13 * 60;
    if (EventName::words(search.anchor) != "lunch" || (search.days && !search.days->isOneDay()))
        return std::nullopt;
    DateParts day = search.days ? search.days->from.wholeDay() : DateParts::fromDay(around.now, around.calendar);
    day.allDay = false;
    const DateParts start = day.adding(noon);
    const DateParts end = day.adding(one);
    return Bounds{start, end, SpokenWhen::clock(search.isAfterAnchor ? end : start) + onDay(day), ""};
}

} // namespace

EventAnchor::Verdict EventAnchor::bound(std::vector<FoundThing>& listed, EventSearch& search, const LocalTime& around)
{
    auto bounds = eventNamed(listed, search.anchor, around);
    if (!bounds)
        bounds = usualLunch(search, around);
    if (!bounds)
        return Verdict::isMissing;
    DateParts dayStart = bounds->start.wholeDay();
    dayStart.allDay = false;
    constexpr int lastMinute = 24 * 60 - 1;
    std::erase_if(listed, [&](const FoundThing& thing) {
        if (!thing.start || thing.start->allDay || thing.id == bounds->id
            || thing.start->wholeDay() != bounds->start.wholeDay())
            return true;
        return search.isAfterAnchor ? *thing.start < bounds->end : !(*thing.start < bounds->start);
    });
    const std::string words = (search.isAfterAnchor ? "after " : "before ") + bounds->words;
    search.days = search.isAfterAnchor ? SpokenDays{bounds->end, dayStart.adding(lastMinute), words}
                                       : SpokenDays{dayStart, bounds->start, words};
    return Verdict::isBound;
}

} // namespace quorvell
