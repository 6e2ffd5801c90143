// SPDX-License-Identifier: MIT
#include "LocalModel/ModelTools.h"

#include "QuorvellCore/live/tools/ToolCatalogue.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodeWord.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Whole sentences, as many as fit.
std::string shortened(const std::string& text, std::size_t most)
{
    const std::string first = firstCharacters(text, most);
    const std::size_t end = first.rfind(". ");
    return first.size() == text.size() || end == std::string::npos ? first : first.substr(0, end + 1);
}

Json shortSchema(const Json& schema, bool isTool)
{
    Json result = schema;
    if (const auto hint = readString(schema, "description"))
        result["description"] = shortened(*hint, ModelTools::longestHint);
    const Json* properties = memberOf(schema, "properties");
    if (!properties || !properties->is_object())
        return result;
    Json kept = Json::object();
    // What was done is taken back where the user says so, by the rules: they know what "that" is.
    for (const auto& [name, property] : properties->items())
        if (!isTool || (name != "then" && name != "plan_update" && name != "undo"))
            kept[name] = shortSchema(property, false);
    result["properties"] = std::move(kept);
    return result;
}

bool isOfType(const Json& value, std::string_view type)
{
    if (type == "string")
        return value.is_string();
    if (type == "integer")
        return readInteger(value).has_value();
    if (type == "number")
        return value.is_number();
    if (type == "boolean")
        return value.is_boolean();
    if (type == "array")
        return value.is_array();
    return type != "object" || value.is_object();
}

std::optional<std::string> problemWith(const Json& value, const Json& schema, const std::string& name);

std::optional<std::string> problemInside(const Json& object, const Json& schema)
{
    const Json* properties = memberOf(schema, "properties");
    for (const std::string& required : readStrings(schema, "required").value_or(std::vector<std::string>()))
        if (!memberOf(object, required))
            return "The argument \"" + required + "\" is missing.";
    for (const auto& [name, value] : object.items()) {
        const Json* property = properties ? memberOf(*properties, name) : nullptr;
        if (!property)
            return "There is no argument \"" + codeWord(name) + "\".";
        if (auto problem = problemWith(value, *property, name))
            return problem;
    }
    return std::nullopt;
}

std::optional<std::string> problemWith(const Json& value, const Json& schema, const std::string& name)
{
    const std::string type = readString(schema, "type").value_or("");
    if (!isOfType(value, type))
        return "The argument \"" + name + "\" must be of the type " + type + ".";
    const auto choices = readStrings(schema, "enum");
    if (choices && std::ranges::find(*choices, readString(value).value_or("")) == choices->end())
        return "The argument \"" + name + "\" must be one of the values that are listed for it.";
    const Json* items = memberOf(schema, "items");
    if (items && value.is_array()) {
        for (const Json& item : value)
            if (auto problem = problemWith(item, *items, name))
                return problem;
    }
    return value.is_object() && memberOf(schema, "properties") ? problemInside(value, schema) : std::nullopt;
}

} // namespace

ModelTools::ModelTools(const Json& declarations)
{
    std::size_t bytes = 0;
    for (const Json& declaration : declarations) {
        const auto name = readString(declaration, "name");
        if (!name)
            continue;
        const Json* parameters = memberOf(declaration, "parameters");
        const Json none{{"type", "object"}, {"properties", Json::object()}};
        Json schema =
            shortSchema(ToolCatalogue::jsonSchema(parameters && parameters->is_object() ? *parameters : none), true);
        Json function{{"name", *name},
            {"description", shortened(readString(declaration, "description").value_or(""), longestDescription)},
            {"parameters", schema}};
        bytes += dumpJson(function).size();
        if (bytes > mostBytes)
            return;
        m_declared.push_back({{"type", "function"}, {"function", std::move(function)}});
        m_schemas[*name] = std::move(schema);
    }
}

std::optional<std::string> ModelTools::problem(std::string_view name, std::string_view arguments) const
{
    const auto schema = m_schemas.find(name);
    if (schema == m_schemas.end())
        return "There is no tool of that name. Use only the tools that are listed.";
    const auto json = parseJson(arguments, {.maximumBytes = longestArguments, .maximumDepth = 16});
    if (!json || !json->is_object())
        return "The arguments must be one JSON object of at most 16 KiB.";
    return problemInside(*json, schema->second);
}

} // namespace quorvell
