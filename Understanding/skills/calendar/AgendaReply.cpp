// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/AgendaReply.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <vector>

namespace quorvell {

namespace {

constexpr std::size_t slotsNamed = 3;

std::string text(const Json& object, const char* key)
{
    return trimmed(readString(object, key).value_or(""));
}

std::vector<Json> listIn(const Json& result, const char* key)
{
    const Json* list = memberOf(result, key);
    return list && list->is_array() ? std::vector<Json>(list->begin(), list->end()) : std::vector<Json>();
}

/// "at 1 PM", or the day as well where the list is of several.
std::string whenOf(const Json& item, bool namesDay)
{
    const auto start = ToolResults::dateIn(item, "start");
    if (namesDay)
        return start ? SpokenWhen::on(SpokenWhen::date(*start)) : "";
    const std::string clock = start ? SpokenWhen::clock(*start) : "";
    return clock.empty() ? "all day" : "at " + clock;
}

std::string sentence(const Json& item, bool namesDay)
{
    const std::string when = whenOf(item, namesDay);
    const std::string place = text(item, "place");
    const std::string kind = text(item, "kind") == "reminder" ? "A reminder, " : "";
    return " " + kind + text(item, "title") + (when.empty() ? "" : ", " + when) + (place.empty() ? "" : ", " + place)
        + ".";
}

/// The user's own words for the days, as the end of a sentence.
std::string withLead(std::string days)
{
    static const Pattern weekday("\\b(mon|tues|wednes|thurs|fri|satur|sun)day\\b", Pattern::Case::insensitive);
    if (days.empty())
        return days;
    if (const auto match = weekday.find(days)) {
        const std::size_t start = match->range.start;
        days = (start == 0 ? "on " : "") + days.substr(0, start) + withUpperCaseFirst(days.substr(start));
    }
    return " " + days;
}

std::string listReply(const Json& result, const RequestMemory& memory)
{
    const std::string days = memory.daysInWords();
    const auto items = listIn(result, "items");
    if (items.empty())
        return "There is nothing in your calendar" + withLead(days) + ".";
    const bool isOneDay = memory.days && memory.days->isOneDay();
    std::string reply =
        items.size() == 1 ? "There is one thing" : "There are " + std::to_string(items.size()) + " things";
    reply += withLead(days) + ".";
    const std::size_t named = std::min(items.size(), RequestMemory::mostTold);
    for (std::size_t index = 0; index < named; ++index)
        reply += sentence(items[index], !isOneDay);
    return reply + (named < items.size() ? " And more." : "");
}

std::string freeReply(const Json& result, const std::string& days)
{
    const auto slots = listIn(result, "slots");
    if (slots.empty())
        return "I found no free time" + withLead(days) + ".";
    std::string reply = "You are free";
    const std::size_t named = std::min(slots.size(), slotsNamed);
    std::optional<DateParts> last;
    for (std::size_t index = 0; index < named; ++index) {
        const auto start = ToolResults::dateIn(slots[index], "start").value_or(DateParts());
        const auto end = ToolResults::dateIn(slots[index], "end");
        const bool isNewDay = !last || last->wholeDay() != start.wholeDay();
        const std::string day = isNewDay ? " " + SpokenWhen::on(SpokenWhen::date(start.wholeDay())) : "";
        last = start;
        reply += (index > 0 ? ", or" : "") + day + " from " + SpokenWhen::clock(start)
            + (end ? " to " + SpokenWhen::clock(*end) : "");
    }
    return reply + ".";
}

std::string caveats(const Json& result)
{
    std::string names;
    for (const Json& conflict : listIn(result, "conflicts")) {
        const std::string name = conflict.is_string() ? readString(conflict).value_or("") : text(conflict, "title");
        names += (names.empty() ? "" : " and ") + name;
    }
    std::string told = names.empty() ? "" : " That is at the same time as " + names + ".";
    for (const Json& reminder : listIn(result, "reminders"))
        told += " Your reminder “" + text(reminder, "title") + "” comes meanwhile.";
    return told + (readBool(result, "past").value_or(false) ? " Mind that this is already past." : "");
}

/// How much of a series was changed, as the end of a sentence.
std::string extent(const Json& result, Wish::Scope scope)
{
    if (!readBool(result, "repeats").value_or(false) || scope == Wish::Scope::open)
        return "";
    return scope == Wish::Scope::all ? ", and so are all its other times" : ", this time only";
}

std::string eventReply(const ToolResult& answer, Wish::Scope scope)
{
    const Json& result = answer.json();
    const std::string title = text(result, "title");
    const auto start = ToolResults::dateIn(result, "start");
    const std::string when = SpokenWhen::on(start ? SpokenWhen::date(*start) : text(result, "when"));
    if (answer.status() == ToolStatus::deleted)
        return "I have deleted " + title + " from your calendar.";
    if (answer.status() == ToolStatus::changed)
        return title + " is now" + (when.empty() ? " changed" : " " + when) + extent(result, scope) + "."
            + caveats(result);
    const std::string repeat = text(result, "repeat_words");
    const std::string often = repeat.empty() ? "" : ", " + lowerCased(repeat.substr(0, 1)) + repeat.substr(1);
    return "I have put " + title + " into your calendar" + often
        + (when.empty() ? "" : (repeat.empty() ? ", " : ", starting ") + when) + "." + caveats(result);
}

} // namespace

std::string AgendaReply::named(const FoundThing& thing)
{
    const std::string when = thing.start ? SpokenWhen::on(SpokenWhen::date(*thing.start)) : "";
    return thing.title + (when.empty() ? "" : ", " + when);
}

std::string AgendaReply::next(const std::vector<FoundThing>& events)
{
    if (events.empty())
        return "There is nothing coming up in your calendar.";
    return "Next is " + named(events.front()) + ".";
}

std::string AgendaReply::reply(std::string_view tool, const ToolResult& result, const RequestMemory& memory)
{
    if (tool == "whats_on")
        return listReply(result.json(), memory);
    return tool == "find_free_time" ? freeReply(result.json(), memory.daysInWords())
                                    : eventReply(result, memory.wish.scope);
}

} // namespace quorvell
