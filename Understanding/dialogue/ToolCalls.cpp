// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/ToolCalls.h"

#include "Understanding/dialogue/PlainReplies.h"

#include <nlohmann/json.hpp>

namespace quorvell {

ToolCalls::Answer ToolCalls::call(
    const RuleSurroundings& around, std::string_view tool, const Json& arguments, std::string_view purpose)
{
    if (!around.offers(tool))
        return PlainReplies::notOffered(purpose);
    return ToolRequest{std::string(tool), dumpJson(arguments)};
}

ToolCalls::Answer ToolCalls::again(
    std::string_view tool, std::string_view text, const char* key, std::string_view value)
{
    Json arguments = parseJson(text).value_or(Json::object());
    arguments[key] = value;
    return ToolRequest{std::string(tool), dumpJson(arguments)};
}

ToolCalls::Answer ToolCalls::chosen(std::string_view tool, std::string_view text, std::string_view id)
{
    Json arguments = parseJson(text).value_or(Json::object());
    arguments.erase("task");
    arguments["id"] = id;
    return ToolRequest{std::string(tool), dumpJson(arguments)};
}

} // namespace quorvell
