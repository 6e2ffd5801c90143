// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/acting/AgendaCalls.h"

#include "Understanding/dialogue/PlainReplies.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

constexpr const char* looking = "look into your calendar";
constexpr const char* changing = "change your calendar";

Json ofScope(Json arguments, Wish::Scope scope)
{
    if (scope == Wish::Scope::all)
        arguments["series"] = true;
    return arguments;
}

} // namespace

ToolCalls::Answer AgendaCalls::whatsOn(const SpokenDays& days, std::string_view words) const
{
    Json arguments{{"from", days.from.text()}, {"to", days.to.text()}};
    if (!words.empty())
        arguments["words"] = words;
    return ToolCalls::call(around, "whats_on", arguments, looking);
}

ToolCalls::Answer AgendaCalls::findFreeTime(int minutes, const std::optional<SpokenDays>& days) const
{
    Json arguments{{"minutes", minutes}};
    if (days) {
        arguments["from"] = days->from.text();
        arguments["to"] = days->to.text();
    }
    return ToolCalls::call(around, "find_free_time", arguments, looking);
}

ToolCalls::Answer AgendaCalls::add(const AgendaIntent& event) const
{
    Json arguments{{"title", event.title}, {"start", event.start ? event.start->text() : std::string()}};
    if (event.end)
        arguments["end"] = event.end->text();
    else if (event.minutes > 0)
        arguments["minutes"] = event.minutes;
    if (!event.hasTime())
        arguments["all_day"] = true;
    if (!event.repeat.empty())
        arguments["repeat"] = event.repeat;
    return ToolCalls::call(around, "add_event", arguments, "put events into your calendar");
}

ToolCalls::Answer AgendaCalls::move(
    std::string_view id, const DateParts& start, const std::optional<DateParts>& end, Wish::Scope scope) const
{
    Json changes{{"start", start.text()}};
    if (end)
        changes["end"] = end->text();
    return ToolCalls::call(around, "change_event", ofScope({{"id", id}, {"changes", changes}}, scope), changing);
}

ToolCalls::Answer AgendaCalls::cancel(std::string_view id, Wish::Scope scope) const
{
    return ToolCalls::call(around, "change_event", ofScope({{"id", id}, {"cancel", true}}, scope), changing);
}

ToolCalls::Answer AgendaCalls::cancelAll(const std::vector<FoundThing>& events, Wish::Scope scope) const
{
    Json ids = Json::array();
    for (const FoundThing& event : events)
        ids.push_back(event.id);
    return ToolCalls::call(
        around, "change_event", ofScope({{"ids", std::move(ids)}, {"cancel", true}}, scope), changing);
}

ToolCalls::Answer AgendaCalls::describe(
    std::string_view id, const char* what, std::string_view value, Wish::Scope scope) const
{
    const Json changes{{what, value}};
    return ToolCalls::call(around, "change_event", ofScope({{"id", id}, {"changes", changes}}, scope), changing);
}

std::optional<ToolCalls::Answer> AgendaCalls::refusal() const
{
    return around.offers("change_event") ? std::nullopt
                                         : std::optional<ToolCalls::Answer>(PlainReplies::notOffered(changing));
}

} // namespace quorvell
