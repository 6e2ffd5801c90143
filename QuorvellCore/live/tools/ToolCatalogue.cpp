// SPDX-License-Identifier: MIT
// The tools as the two kinds of backend want them.
#include "QuorvellCore/live/tools/ToolCatalogue.h"

#include "QuorvellCore/live/tools/ToolDeclaration.h"
#include "QuorvellCore/live/tools/ToolDeclarations.h"
#include "QuorvellCore/live/tools/ToolSchema.h"
#include "QuorvellCore/live/tools/ToolTable.h"
#include "QuorvellCore/text/LowerCase.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Condition = bool (*)(const ToolTraits&);

template <Condition holds>
constexpr auto countWhere = static_cast<std::size_t>(std::count_if(toolTable.begin(), toolTable.end(), holds));

template <Condition holds> constexpr auto namesWhere()
{
    std::array<std::string_view, countWhere<holds>> names;
    auto next = names.begin();
    for (const ToolTraits& tool : toolTable)
        if (holds(tool))
            *next++ = tool.name;
    return names;
}

constexpr bool isOfNotebook(const ToolTraits& tool)
{
    return tool.group == ToolGroup::notebook;
}

constexpr bool isOfConnectedApps(const ToolTraits& tool)
{
    return tool.group == ToolGroup::connectedApps;
}

constexpr bool namesNextStep(const ToolTraits& tool)
{
    return tool.namesNextStep;
}

constexpr bool updatesPlan(const ToolTraits& tool)
{
    return tool.planPlace > 0;
}

constexpr auto namesByPlanPlace()
{
    std::array<std::string_view, countWhere<updatesPlan>> names;
    for (const ToolTraits& tool : toolTable)
        if (updatesPlan(tool))
            names[tool.planPlace - 1U] = tool.name;
    return names;
}

constexpr auto notebookNames = namesWhere<isOfNotebook>();
constexpr auto connectedNames = namesWhere<isOfConnectedApps>();
constexpr auto nextStepNames = namesWhere<namesNextStep>();
constexpr auto planUpdateNames = namesByPlanPlace();
static_assert(std::none_of(planUpdateNames.begin(), planUpdateNames.end(), [](auto name) { return name.empty(); }),
    "each place is given once");

Json group(Json declarations)
{
    return {{"functionDeclarations", std::move(declarations)}};
}

Json screenGroup()
{
    Json all = tool_declarations::screenActions();
    const Json tasks = tool_declarations::tasksAndModes();
    all.insert(all.end(), tasks.begin(), tasks.end());
    return all;
}

void removeProperty(Json& declaration, const char* name)
{
    if (declaration.contains("parameters"))
        declaration["parameters"]["properties"].erase(name);
}

bool isOffered(const Json& declaration, const ToolFlags& flags)
{
    const ToolTraits* tool = ToolTraits::find(readString(declaration, "name").value_or(""));
    if (!tool || (tool->isTiered && !flags.tiered))
        return false;
    if (tool->group == ToolGroup::lookUp)
        return flags.webLookup;
    return tool->group != ToolGroup::connectedApps || flags.connectedApps;
}

/// The declarations of one group that the flags ask for.
Json offered(const Json& declarations, const ToolFlags& flags)
{
    Json kept = Json::array();
    for (const Json& declaration : declarations) {
        if (!isOffered(declaration, flags))
            continue;
        kept.push_back(declaration);
        if (!flags.nextStep)
            removeProperty(kept.back(), "then");
    }
    return kept;
}

Json responsesTool(const Json& declaration)
{
    const Json* parameters = memberOf(declaration, "parameters");
    const Json none{{"type", "object"}, {"properties", Json::object()}};
    return {{"type", "function"}, {"name", declaration["name"]}, {"description", declaration["description"]},
        {"parameters", parameters ? ToolCatalogue::jsonSchema(*parameters) : none}};
}

/// The schemas in a list or under the names of an object.
Json eachAsJsonSchema(const Json& schemas)
{
    Json result = schemas;
    for (Json& schema : result)
        schema = ToolCatalogue::jsonSchema(schema);
    return result;
}

Json lowerCasedTypeName(const Json& type)
{
    const auto name = readString(type);
    return name ? Json(asciiLowerCased(*name)) : type;
}

} // namespace

constinit const ToolNames ToolCatalogue::notebookToolNames{notebookNames};
constinit const ToolNames ToolCatalogue::connectedAppToolNames{connectedNames};
constinit const ToolNames ToolCatalogue::nextStepTools{nextStepNames};
constinit const ToolNames ToolCatalogue::planUpdateTools{planUpdateNames};

const Json& ToolCatalogue::planUpdateProperty()
{
    return tool_declarations::planUpdateProperty();
}

const Json& ToolCatalogue::nextStepProperty()
{
    return tool_declarations::nextStepProperty();
}

const Json& ToolCatalogue::notebookTools()
{
    static const Json declarations = tool_declarations::notebook();
    return declarations;
}

const Json& ToolCatalogue::connectedAppTools()
{
    static const Json declarations = tool_declarations::connectedApps();
    return declarations;
}

const Json& ToolCatalogue::lookUpTool()
{
    using namespace tool_schema;
    static const Json declaration = tool_declarations::declaration("look_up",
        "Looks something up on the web and answers with a short summary and its sources. For anything recent, changing "
        "or uncertain.",
        {required("query", text("A short question without the user's private details."))});
    return declaration;
}

const Json& ToolCatalogue::updateTool()
{
    using namespace tool_schema;
    static const Json declaration = tool_declarations::declaration("quorvell_update",
        "Checks for a newer Quorvell, or installs it when the user has asked for that. Answers with both versions.",
        {required("action", choice("What to do.", {"check", "install"}))});
    return declaration;
}

const Json& ToolCatalogue::tools()
{
    static const Json groups = Json::array({group(screenGroup()), group(notebookTools()),
        group(Json::array({updateTool()})), group(connectedAppTools()), group(Json::array({lookUpTool()}))});
    return groups;
}

Json ToolCatalogue::liveTools(const ToolFlags& flags)
{
    Json groups = Json::array();
    for (const Json& whole : tools()) {
        Json kept = offered(whole["functionDeclarations"], flags);
        if (!kept.empty())
            groups.push_back(group(std::move(kept)));
    }
    return groups;
}

Json ToolCatalogue::responsesTools(const ToolFlags& flags)
{
    Json list = Json::array();
    for (const Json& whole : tools()) {
        for (const Json& declaration : offered(whole["functionDeclarations"], flags))
            list.push_back(responsesTool(declaration));
    }
    return list;
}

Json ToolCatalogue::jsonSchema(const Json& schema)
{
    if (!schema.is_object())
        return schema;
    Json result = schema;
    for (auto& [key, value] : result.items()) {
        if (key == "type")
            value = lowerCasedTypeName(value);
        else if (key == "items")
            value = jsonSchema(value);
        else if (key == "properties" || key == "anyOf")
            value = eachAsJsonSchema(value);
    }
    return result;
}

} // namespace quorvell
