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

} // namespace quorvell
