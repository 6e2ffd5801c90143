// SPDX-License-Identifier: MIT
#include "LiveService/rules/ToolRequests.h"

#include "LiveService/replies/PlainReplies.h"
#include "OnDeviceSpeech/SpokenToWritten.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

ToolRequests::Answer request(
    const RuleSurroundings& surroundings, const char* tool, const Json& arguments, const char* purpose)
{
    if (!surroundings.offers(tool))
        return PlainReplies::notOffered(purpose);
    return ToolRequest{tool, dumpJson(arguments)};
}

Json ofScope(Json arguments, EventWish::Scope scope)
{
    if (scope == EventWish::Scope::all)
        arguments["series"] = true;
    return arguments;
}

} // namespace

ToolRequests::Answer ToolRequests::remindFromWords(std::string_view text, std::string_view repeat) const
{
    Json arguments{{"text", spokenToWritten(text)}};
    if (!repeat.empty())
        arguments["repeat"] = repeat;
    return request(surroundings, "set_reminder", arguments, "set reminders");
}

ToolRequests::Answer ToolRequests::remindSettled(
    std::string_view task, std::string_view date, std::string_view repeat) const
{
    Json arguments{{"task", task}, {"date", date}};
    if (!repeat.empty())
        arguments["repeat"] = repeat;
    return request(surroundings, "set_reminder", arguments, "set reminders");
}

ToolRequests::Answer ToolRequests::keep(std::string_view title, std::string_view text) const
{
    return request(surroundings, "keep_note", {{"title", title}, {"text", text}}, "save notes");
}

ToolRequests::Answer ToolRequests::find(std::string_view query, int limit) const
{
    Json arguments{{"query", query}};
    if (limit > 0)
        arguments["limit"] = limit;
    return request(surroundings, "find_in_notebook", arguments, "look into your notebook");
}

ToolRequests::Answer ToolRequests::readNote(std::string_view id) const
{
    return request(surroundings, "read_note", {{"id", id}}, "read notes");
}

ToolRequests::Answer ToolRequests::listReminders() const
{
    return request(surroundings, "set_reminder", {{"list", true}}, "look at your reminders");
}

ToolRequests::Answer ToolRequests::finishReminder(std::string_view task) const
{
    Json arguments = Json::object();
    if (!task.empty())
        arguments["task"] = task;
    arguments["done"] = true;
    return request(surroundings, "set_reminder", arguments, "change reminders");
}

ToolRequests::Answer ToolRequests::putOffReminder(std::string_view task, std::string_view when) const
{
    Json arguments = Json::object();
    if (!task.empty())
        arguments["task"] = task;
    arguments["later"] = when;
    return request(surroundings, "set_reminder", arguments, "change reminders");
}

ToolRequests::Answer ToolRequests::remember(std::string_view fact) const
{
    return request(surroundings, "remember_about_them", {{"fact", fact}}, "remember things about you");
}

ToolRequests::Answer ToolRequests::openNotebook() const
{
    return request(surroundings, "open_notebook", Json::object(), "open your notebook");
}

ToolRequests::Answer ToolRequests::setMode(std::string_view mode) const
{
    return request(surroundings, "set_mode", {{"mode", mode}}, "change how I help");
}

ToolRequests::Answer ToolRequests::whatsOn(const SpokenDays& days) const
{
    return request(surroundings, "whats_on", {{"from", days.from}, {"to", days.to}}, "look into your calendar");
}

ToolRequests::Answer ToolRequests::findFreeTime(int minutes, const SpokenDays& days) const
{
    Json arguments{{"minutes", minutes}};
    if (!days.from.empty()) {
        arguments["from"] = days.from;
        arguments["to"] = days.to;
    }
    return request(surroundings, "find_free_time", arguments, "look into your calendar");
}

ToolRequests::Answer ToolRequests::addEvent(const AgendaIntent& event) const
{
    constexpr std::size_t dayOnly = 10; ///< "2026-11-22"
    Json arguments{{"title", event.title}, {"start", event.start}};
    if (!event.end.empty())
        arguments["end"] = event.end;
    else if (event.minutes > 0)
        arguments["minutes"] = event.minutes;
    if (event.start.size() <= dayOnly)
        arguments["all_day"] = true;
    if (!event.repeat.empty())
        arguments["repeat"] = event.repeat;
    return request(surroundings, "add_event", arguments, "put events into your calendar");
}

ToolRequests::Answer ToolRequests::moveEvent(
    std::string_view id, std::string_view start, std::string_view end, EventWish::Scope scope) const
{
    Json changes{{"start", start}};
    if (!end.empty())
        changes["end"] = end;
    return request(
        surroundings, "change_event", ofScope({{"id", id}, {"changes", changes}}, scope), "change your calendar");
}

ToolRequests::Answer ToolRequests::cancelEvent(std::string_view id, EventWish::Scope scope) const
{
    return request(
        surroundings, "change_event", ofScope({{"id", id}, {"cancel", true}}, scope), "change your calendar");
}

ToolRequests::Answer ToolRequests::confirmed(std::string_view tool, std::string_view text) const
{
    Json arguments = parseJson(text).value_or(Json::object());
    arguments["confirmed"] = true;
    return ToolRequest{std::string(tool), dumpJson(arguments)};
}

ToolRequests::Answer ToolRequests::putOffAgain(
    std::string_view tool, std::string_view text, std::string_view when) const
{
    Json arguments = parseJson(text).value_or(Json::object());
    arguments["later"] = when;
    return ToolRequest{std::string(tool), dumpJson(arguments)};
}

ToolRequests::Answer ToolRequests::chosen(std::string_view tool, std::string_view text, std::string_view id) const
{
    Json arguments = parseJson(text).value_or(Json::object());
    arguments.erase("task");
    arguments["id"] = id;
    return ToolRequest{std::string(tool), dumpJson(arguments)};
}

} // namespace quorvell
