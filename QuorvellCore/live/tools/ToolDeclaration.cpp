// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/tools/ToolDeclaration.h"

#include "QuorvellCore/live/tools/ToolDeclarations.h"
#include "QuorvellCore/live/tools/ToolTraits.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell::tool_declarations {

using namespace tool_schema;

namespace {

/// Of the tools that a step may use.
std::vector<std::string_view> stepNames()
{
    std::vector<std::string_view> names;
    for (const ToolTraits& tool : ToolTraits::all())
        if (tool.namesNextStep)
            names.push_back(tool.name);
    return names;
}

} // namespace

const Json& planUpdateProperty()
{
    static const Json property = object("Optional: keeps the open plan true without a call of its own, such as "
                                        "{\"done\": [1], \"facts\": [\"The order number is 4711.\"]}.",
        {optional("done", list("Numbers of the steps that are done, from 1.", Json{{"type", "INTEGER"}})),
            optional("facts", list("Facts worth keeping for later steps.", Json{{"type", "STRING"}}))});
    return property;
}

const Json& nextStepProperty()
{
    static const Json property = object("Optional, and worth giving whenever you can already tell: the one step after "
                                        "this one. It is carried out only if this one worked and the step still fits; "
                                        "otherwise you get the fresh screen. Never a step that needs consent.",
        {required("tool", choice("The tool of that step.", stepNames())), required("arguments", stepArguments())});
    return property;
}

Json declaration(std::string_view name, std::string_view description, const std::vector<Property>& properties)
{
    std::vector<Property> all = properties;
    const ToolTraits* tool = ToolTraits::find(name);
    if (tool && tool->planPlace > 0)
        all.push_back(optional("plan_update", planUpdateProperty()));
    if (tool && tool->namesNextStep)
        all.push_back(optional("then", nextStepProperty()));
    Json declared{{"name", name}, {"description", description}};
    if (all.empty())
        return declared;
    Json parameters{{"type", "OBJECT"}};
    addProperties(parameters, all);
    declared["parameters"] = std::move(parameters);
    return declared;
}

} // namespace quorvell::tool_declarations
