// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/EventClashes.h"

#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/acting/ToldSeries.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/time/SpokenWhen.h"

#include <algorithm>
#include <cstddef>

namespace quorvell {

namespace {

constexpr std::size_t mostPairs = 3;

bool overlap(const FoundThing& one, const FoundThing& other)
{
    const auto hasHours = [](const FoundThing& event) { return event.start && event.end && !event.start->allDay; };
    return hasHours(one) && hasHours(other) && *one.start < *other.end && *other.start < *one.end;
}

} // namespace

std::string EventClashes::told(const std::vector<FoundThing>& events, const EventSearch& search)
{
    const auto named = search.name.empty() ? events : EventName::fitting(events, search.name);
    if (named.empty() && !search.name.empty())
        return "";
    std::string text;
    std::size_t pairs = 0;
    for (std::size_t first = 0; first < events.size(); ++first)
        for (std::size_t second = first + 1; second < events.size(); ++second) {
            const auto isNamed = [&](const FoundThing& event) {
                return std::ranges::find(named, event.id, &FoundThing::id) != named.end();
            };
            if (!overlap(events[first], events[second]) || !(isNamed(events[first]) || isNamed(events[second]))
                || ++pairs > mostPairs)
                continue;
            text += (text.empty() ? "" : " ") + AgendaReply::named(events[first]) + ", is at the same time as "
                + events[second].title + ", at " + SpokenWhen::clock(*events[second].start) + ".";
        }
    if (pairs > mostPairs)
        text += " And " + std::to_string(pairs - mostPairs) + " more.";
    if (!text.empty())
        return text;
    if (!search.name.empty())
        return "Nothing clashes with " + AgendaReply::named(named.front()) + ".";
    return "Nothing clashes" + AgendaReply::daysBehind(search.days ? search.days->words : "in the next month") + ".";
}

std::string EventClashes::repeating(std::vector<FoundThing> events, const EventSearch& search)
{
    const auto all = events;
    ToldSeries::keepFirstTimes(events);
    if (search.name.empty())
        std::erase_if(events, [](const FoundThing& event) { return !event.repeats; });
    if (events.empty())
        return "Nothing in your calendar comes back.";
    std::string text = search.name.empty() ? "These come back:" : "";
    for (const FoundThing& event : events) {
        const auto times = ToldSeries::timesOf(event, all);
        text += (text.empty() ? "" : " ") + event.title + (times.size() > 1 ? ", " : " is ")
            + (event.repeats && times.size() == 1 ? "repeating, next " : "") + ToldSeries::when(times)
            + (event.repeats ? "." : ", and does not repeat.");
    }
    return text;
}

} // namespace quorvell
