// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/finding/EventLookupReply.h"

#include "QuorvellCore/text/Characters.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/finding/EventElsewhere.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <chrono>

namespace quorvell {

namespace {

using Aim = EventSearch::Aim;

constexpr std::size_t mostNamed = 3;

std::vector<Json> itemsOf(const std::vector<FoundThing>& found, const ToolResult& result)
{
    std::vector<Json> items;
    const Json* all = result.list("items");
    for (const FoundThing& thing : found) {
        if (!all)
            break;
        const auto item =
            std::ranges::find_if(*all, [&](const Json& candidate) { return readString(candidate, "id") == thing.id; });
        if (item != all->end())
            items.push_back(*item);
    }
    return items;
}

std::string placeOf(const FoundThing& event, const ToolResult& result)
{
    const auto items = itemsOf({event}, result);
    return items.empty() ? "" : trimmed(readString(items.front(), "place").value_or(""));
}

std::string whenIs(const FoundThing& event, const LocalTime& around)
{
    return event.start ? SpokenWhen::on(SpokenWhen::dateSeenFrom(*event.start, around)) : "in your calendar";
}

/// "in 5 days", "tomorrow", "in 3 hours"
std::string untilThen(const DateParts& start, const LocalTime& around)
{
    const auto instant = start.instant(around.calendar);
    const auto dayOf = [&](const DateParts& parts) {
        DateParts noon = parts.wholeDay();
        noon.hour = 12;
        noon.allDay = false;
        return noon.instant(around.calendar).value_or(around.now);
    };
    const auto days =
        std::chrono::round<std::chrono::days>(dayOf(start) - dayOf(DateParts::from(around.now, around.calendar)))
            .count();
    if (days > 1)
        return "in " + std::to_string(days) + " days";
    const auto minutes = instant ? std::chrono::round<std::chrono::minutes>(*instant - around.now).count() : 0;
    if (start.allDay || minutes <= 0)
        return days == 1 ? "tomorrow" : "today";
    constexpr int hour = 60;
    const auto hours = minutes / hour;
    const auto rest = minutes % hour;
    const auto counted = [](auto count, const char* unit) {
        return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
    };
    return "in " + (hours > 0 ? counted(hours, "hour") : "") + (hours > 0 && rest > 0 ? " and " : "")
        + (rest > 0 || hours == 0 ? counted(rest, "minute") : "");
}

} // namespace

std::string EventLookupReply::daysNamed() const
{
    return search.days ? AgendaReply::daysBehind(search.days->words) : "";
}

/// "sales meeting", "meeting", "event"
std::string EventLookupReply::wanted() const
{
    if (!search.name.empty())
        return search.name;
    return search.noun.empty() ? "event" : search.noun;
}

std::string EventLookupReply::sentences(const std::vector<FoundThing>& found) const
{
    return AgendaReply::sentences(itemsOf(found, result), search.days, around);
}

std::string EventLookupReply::none() const
{
    if (search.aim == Aim::cancel)
        return "I found no " + wanted() + daysNamed() + " in your calendar, so nothing was deleted.";
    return "I found no " + wanted() + " in your calendar" + daysNamed() + (search.isBack ? " in the last year" : "")
        + ".";
}

std::string EventLookupReply::nothing(const std::vector<FoundThing>& listed) const
{
    // At one hour of a day there is nothing else.
    const bool isOfDay = search.days && search.days->isOneDay() && !listed.empty() && listed.size() <= mostNamed;
    if (search.aim == Aim::cancel)
        return none() + (isOfDay ? " There is something else:" + sentences(listed) : "");
    if (search.aim == Aim::remind)
        return "I found no " + wanted() + daysNamed() + " in your calendar"
            + (search.value.empty() ? ", so I have set no reminder." : ".");
    const bool isNamed = !search.name.empty() || (!search.noun.empty() && !listed.empty());
    if (!isNamed && search.days)
        return "There is nothing in your calendar" + daysNamed() + ".";
    if (!isNamed)
        return search.isBack ? "There was nothing in your calendar." : "There is nothing coming up in your calendar.";
    constexpr std::ptrdiff_t mostBlanks = 4;
    if (std::ranges::count(search.name, ' ') > mostBlanks) // That is more than a name.
        return "I found nothing like that in your calendar.";
    if (!search.days || listed.empty() || listed.size() > mostNamed)
        return none();
    return none() + " There is something else:" + sentences(listed);
}

std::string EventLookupReply::ofOne(const FoundThing& event) const
{
    const std::string place = placeOf(event, result);
    const std::string is = event.title + (search.isBack ? " was " : " is ") + whenIs(event, around);
    if (search.isSpan && event.start)
        return "That is " + untilThen(*event.start, around) + ". " + is + ".";
    if (search.aim == Aim::where)
        return place.empty()
            ? is + (event.title.find(" at ") != std::string::npos ? "." : ". Your calendar does not say where.")
            : is + ", at: " + place + ".";
    if (search.aim == Aim::who)
        return is + ". Your calendar says nothing more of who comes.";
    if (search.aim == Aim::ends && event.end && event.start && !event.start->allDay) {
        const bool isSameDay = event.end->wholeDay() == event.start->wholeDay();
        return is + ", until " + (isSameDay ? SpokenWhen::clock(*event.end) : SpokenWhen::date(*event.end))
            + (place.empty() ? "." : ", " + place + ".");
    }
    if (search.aim == Aim::ends && event.end && event.start && *event.end > *event.start)
        return is + ", until " + SpokenWhen::date(*event.end) + ".";
    return is + (place.empty() ? "." : ", " + place + ".");
}

std::string EventLookupReply::found(const std::vector<FoundThing>& found) const
{
    constexpr std::array places{"first", "second", "third"};
    if (found.size() == 1 && search.aim == Aim::tell && (search.isLast || (search.place > 0 && search.days)))
        return "The " + std::string(search.isLast ? "last" : places[std::min(search.place, places.size()) - 1]) + " is"
            + sentences(found);
    if (search.isNext && search.name.empty() && search.aim != Aim::where && search.aim != Aim::ends)
        return AgendaReply::next(found);
    if (found.size() == 1 && search.aim != Aim::tell && search.aim != Aim::confirm)
        return ofOne(found.front());
    if (search.aim == Aim::confirm)
        return "Yes." + sentences(found);
    if (search.aim == Aim::tell && search.name.empty()) {
        const std::string count =
            found.size() == 1 ? "There is one thing" : "There are " + std::to_string(found.size()) + " things";
        return count + AgendaReply::daysBehind(search.days ? search.days->words : "in the next month") + "."
            + sentences(found);
    }
    if (found.size() == 1)
        return ofOne(found.front());
    return "There are " + std::to_string(found.size()) + "." + sentences(found);
}

std::string EventLookupReply::several(const std::vector<FoundThing>& found)
{
    if (found.size() > mostNamed)
        return EventElsewhere::choices(found);
    std::string question = "There are " + std::to_string(found.size()) + ": ";
    for (std::size_t index = 0; index < found.size(); ++index)
        question += (index > 0 ? "; " : "") + AgendaReply::named(found[index]);
    return question + ". Which one do you mean?";
}

} // namespace quorvell
