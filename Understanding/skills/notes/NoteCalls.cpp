// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteCalls.h"

#include <nlohmann/json.hpp>

namespace quorvell {

ToolCalls::Answer NoteCalls::keep(std::string_view title, std::string_view text) const
{
    return ToolCalls::call(around, "keep_note", {{"title", title}, {"text", text}}, "save notes");
}

ToolCalls::Answer NoteCalls::find(std::string_view query, int limit) const
{
    Json arguments{{"query", query}};
    if (limit > 0)
        arguments["limit"] = limit;
    return ToolCalls::call(around, "find_in_notebook", arguments, "look into your notebook");
}

ToolCalls::Answer NoteCalls::ask(std::string_view question, std::string_view topic) const
{
    return ToolCalls::call(
        around, "find_in_notebook", {{"query", topic}, {"question", question}}, "look into your notebook");
}

ToolCalls::Answer NoteCalls::facts() const
{
    constexpr int most = 20;
    return ToolCalls::call(
        around, "find_in_notebook", {{"query", ""}, {"kind", "about_me"}, {"limit", most}}, "look into your notebook");
}

ToolCalls::Answer NoteCalls::read(std::string_view id) const
{
    return ToolCalls::call(around, "read_note", {{"id", id}}, "read notes");
}

ToolCalls::Answer NoteCalls::remove(std::string_view id) const
{
    return ToolCalls::call(around, "keep_note", {{"note", id}, {"delete", true}}, "delete notes");
}

ToolCalls::Answer NoteCalls::open() const
{
    return ToolCalls::call(around, "open_notebook", Json::object(), "open your notebook");
}

} // namespace quorvell
