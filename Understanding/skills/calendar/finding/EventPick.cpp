// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/EventPick.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/reading/EventName.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

using Aim = EventSearch::Aim;

/// What began is no "next" any more.
void keepNext(std::vector<FoundThing>& found, const EventSearch& search, const LocalTime& around)
{
    const DateParts now = DateParts::from(around.now, around.calendar);
    if (search.isBack) {
        std::erase_if(found, [&](const FoundThing& event) { return !event.start || *event.start > now; });
        if (found.size() > 1)
            found = {found.back()};
        return;
    }
    std::erase_if(found, [&](const FoundThing& event) {
        return !event.start || (event.start->allDay ? *event.start < now.wholeDay() : *event.start < now);
    });
    if (found.size() > 1)
        found.resize(1);
}

/// "At 1 PM" is one that begins then, where there is one.
void keepOnHour(std::vector<FoundThing>& found, const EventSearch& search)
{
    if (!search.days || search.days->from.allDay)
        return;
    std::vector<FoundThing> onHour;
    std::ranges::copy_if(found, std::back_inserter(onHour), [&](const FoundThing& event) {
        return event.start && !event.start->allDay && *event.start >= search.days->from
            && *event.start <= search.days->to;
    });
    if (!onHour.empty() || (search.hour && search.aim == Aim::cancel))
        found = std::move(onHour);
}

bool isAtHour(const FoundThing& event, const DateParts& hour)
{
    return event.start && !event.start->allDay && event.start->hour == hour.hour && event.start->minute == hour.minute;
}

/// "My event at 1 PM", of no day: at that hour of any. What has a name may be at another.
void keepAtHourOfAnyDay(std::vector<FoundThing>& found, const EventSearch& search)
{
    if (!search.hour || search.days)
        return;
    std::vector<FoundThing> atHour;
    std::ranges::copy_if(
        found, std::back_inserter(atHour), [&](const FoundThing& event) { return isAtHour(event, *search.hour); });
    if (!atHour.empty() || search.name.empty())
        found = std::move(atHour);
}

/// "The party at the office": its place says the rest.
std::vector<FoundThing> byPlace(
    const std::vector<FoundThing>& listed, const EventSearch& search, const ToolResult& result)
{
    std::vector<FoundThing> placed = listed;
    const Json* items = result.list("items");
    for (FoundThing& thing : placed) {
        if (!items)
            break;
        const auto item = std::find_if(items->begin(), items->end(),
            [&](const Json& candidate) { return readString(candidate, "id") == thing.id; });
        if (item != items->end())
            thing.title += " " + readString(*item, "place").value_or("");
    }
    const auto named = EventName::holdingAll(placed, search.name);
    std::vector<FoundThing> found;
    std::ranges::copy_if(listed, std::back_inserter(found),
        [&](const FoundThing& thing) { return std::ranges::find(named, thing.id, &FoundThing::id) != named.end(); });
    return found;
}

} // namespace

std::vector<FoundThing> EventPick::eachOf(const std::vector<FoundThing>& listed, const std::string& name)
{
    static const Pattern link(" and (?:the |my |our )?| (?:the|my|our) ");
    std::vector<FoundThing> all;
    for (std::size_t start = 0; start <= name.size() && link.find(name);) {
        const auto next = link.find(name, start);
        const std::string named = name.substr(start, (next ? next->range.start : name.size()) - start);
        auto part = EventName::fitting(listed, named);
        if (part.empty())
            part = EventName::alike(listed, named);
        if (part.empty())
            return {};
        all.push_back(part.front());
        start = next ? next->range.end : name.size() + 1;
    }
    return all;
}

std::vector<FoundThing> EventPick::fitting(
    std::vector<FoundThing> listed, const EventSearch& search, const ToolResult& result, const LocalTime& around)
{
    const bool isOfEvents = search.aim != Aim::tell || !search.name.empty() || !search.noun.empty();
    if (isOfEvents)
        std::erase_if(listed, [](const FoundThing& thing) { return thing.skill != AgendaCalls::skill; });
    // Who asks for their meetings, or appointments, wants to know of everything.
    const bool isAny = search.isOfSeries || (search.aim == Aim::tell && EventName::isLoosePlural(search.noun));
    auto found = search.name.empty() ? EventName::called(listed, isAny ? "" : search.noun)
                                     : EventName::fitting(listed, search.name);
    if (found.empty() && !listed.empty())
        found = byPlace(listed, search, result);
    if (found.empty())
        found = EventName::alike(listed, search.name);
    if (found.empty() && search.aim == Aim::cancel)
        found = eachOf(listed, search.name);
    if (!search.except.empty()) {
        const auto kept = EventName::fitting(found, search.except);
        std::erase_if(found, [&](const FoundThing& event) { return std::ranges::find(kept, event) != kept.end(); });
    }
    if (search.isOfSeries)
        std::erase_if(found, [](const FoundThing& event) { return !event.repeats; });
    if (search.aim == Aim::cancel || search.aim == Aim::remind)
        keepOnHour(found, search);
    keepAtHourOfAnyDay(found, search);
    const bool isOne = search.aim == Aim::when && !search.isAll && !search.days;
    if (search.isNext || search.isBack || isOne)
        keepNext(found, search, around);
    if (search.isLast && found.size() > 1)
        found = {found.back()};
    // "The second meeting" counts everything, where not so much is called one.
    if (search.place > found.size() && search.name.empty() && EventName::isLoosePlural(search.noun + "s"))
        found = listed;
    if (search.place > 0 && !search.isNext)
        found = search.place <= found.size() ? std::vector{found[search.place - 1]} : std::vector<FoundThing>();
    return found;
}

bool EventPick::isAtOtherHour(const std::vector<FoundThing>& found, const EventSearch& search)
{
    return search.hour
        && std::ranges::none_of(found, [&](const FoundThing& event) { return isAtHour(event, *search.hour); });
}

void EventPick::keepOneOfSeries(std::vector<FoundThing>& found)
{
    std::vector<FoundThing> kept;
    for (const FoundThing& event : found) {
        const std::string series = event.id.substr(0, event.id.find('#'));
        const bool isKnown = std::ranges::any_of(
            kept, [&](const FoundThing& other) { return other.id.substr(0, other.id.find('#')) == series; });
        if (!event.repeats || !isKnown)
            kept.push_back(event);
    }
    found = std::move(kept);
}

} // namespace quorvell
