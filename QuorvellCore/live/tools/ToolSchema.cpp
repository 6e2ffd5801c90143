// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/tools/ToolSchema.h"

#include <utility>

namespace quorvell::tool_schema {

namespace {

Json described(const char* type, std::string_view description)
{
    return {{"type", type}, {"description", description}};
}

} // namespace

Property required(std::string_view name, Json schema)
{
    return {name, Need::required, std::move(schema)};
}

Property optional(std::string_view name, Json schema)
{
    return {name, Need::optional, std::move(schema)};
}

Json text(std::string_view description)
{
    return described("STRING", description);
}

Json choice(std::string_view description, std::initializer_list<std::string_view> values)
{
    return choice(description, std::span(values.begin(), values.size()));
}

Json choice(std::string_view description, std::span<const std::string_view> values)
{
    Json schema = text(description);
    for (const std::string_view value : values)
        schema["enum"].push_back(value);
    return schema;
}

Json number(std::string_view description)
{
    return described("NUMBER", description);
}

Json integer(std::string_view description)
{
    return described("INTEGER", description);
}

Json flag(std::string_view description)
{
    return described("BOOLEAN", description);
}

Json list(std::string_view description, Json item)
{
    Json schema = described("ARRAY", description);
    schema["items"] = std::move(item);
    return schema;
}

Json object(std::string_view description, const std::vector<Property>& properties)
{
    Json schema = described("OBJECT", description);
    addProperties(schema, properties);
    return schema;
}

void addProperties(Json& schema, const std::vector<Property>& properties)
{
    Json members = Json::object();
    Json names = Json::array();
    for (const auto& [name, need, property] : properties) {
        members[std::string(name)] = property;
        if (need == Need::required)
            names.push_back(name);
    }
    schema["properties"] = std::move(members);
    if (!names.empty())
        schema["required"] = std::move(names);
}

} // namespace quorvell::tool_schema
