// SPDX-License-Identifier: MIT
// Catches tool declarations that lack an argument, or differ between the two forms.
#include "QuorvellCore/live/tools/ToolCatalogue.h"

#include "FixtureTable.h"
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"
#include "QuorvellCore/live/tools/ToolTraits.h"
#include "TemporaryFolder.h"

#include <nlohmann/json.hpp>

#include <set>
#include <sstream>
#include <tuple>

namespace quorvell {

namespace {

constexpr ToolFlags all{.tiered = true, .webLookup = true, .connectedApps = true, .nextStep = true};

std::vector<std::string> namesOf(const Json& responsesTools)
{
    std::vector<std::string> names;
    for (const Json& tool : responsesTools)
        names.push_back(readString(tool, "name").value_or(""));
    return names;
}

/// The name and the arguments, "?" behind those that may be left out. `plan_update` and `then` have their own lists.
std::string signature(const Json& tool)
{
    const Json& parameters = tool["parameters"];
    const auto required = readStrings(parameters, "required").value_or(std::vector<std::string>{});
    std::string line = readString(tool, "name").value_or("");
    for (const auto& [name, schema] : parameters["properties"].items()) {
        if (name == "plan_update" || name == "then")
            continue;
        const bool isRequired = std::find(required.begin(), required.end(), name) != required.end();
        line += " " + name + (isRequired ? "" : "?");
    }
    return line + "\n";
}

/// Says where a schema lacks something that a model or a service needs.
void checkSchema(const Json& schema, const std::string& place, std::set<std::string>& types)
{
    SCOPED_TRACE(place);
    const auto type = readString(schema, "type");
    ASSERT_TRUE(type);
    types.insert(*type);
    if (*type == "array" || *type == "ARRAY") {
        checkSchema(schema["items"], place + "[]", types);
    }
    if (*type == "object" || *type == "OBJECT") {
        for (const auto& [name, property] : schema["properties"].items())
            checkSchema(property, place + "." + name, types);
        for (const std::string& name : readStrings(schema, "required").value_or(std::vector<std::string>{}))
            EXPECT_TRUE(schema["properties"].contains(name)) << name;
    }
}

} // namespace

TEST(ToolCatalogue, declaresEveryToolWithItsArguments)
{
    std::string signatures;
    std::set<std::string> types;
    for (const Json& tool : ToolCatalogue::responsesTools(all)) {
        signatures += signature(tool);
        EXPECT_EQ(readString(tool, "type"), "function");
        EXPECT_GT(readString(tool, "description").value_or("").size(), 20u);
        checkSchema(tool["parameters"], readString(tool, "name").value_or("?"), types);
        for (const auto& [name, schema] : tool["parameters"]["properties"].items())
            EXPECT_GT(readString(schema, "description").value_or("").size(), 3u) << name;
    }
    EXPECT_EQ(signatures, test::readText(QUORVELL_FIXTURES "/live/toolSignatures.txt"));
    EXPECT_EQ(types, (std::set<std::string>{"array", "boolean", "integer", "number", "object", "string"}));
}

TEST(ToolCatalogue, bothFormsHoldTheSameToolsInTheSameOrder)
{
    std::vector<std::string> names;
    std::set<std::string> types;
    for (const Json& group : ToolCatalogue::liveTools(all)) {
        for (const Json& declaration : group["functionDeclarations"]) {
            names.push_back(readString(declaration, "name").value_or(""));
            if (const Json* parameters = memberOf(declaration, "parameters")) {
                EXPECT_FALSE((*parameters)["properties"].empty());
                checkSchema(*parameters, names.back(), types);
            }
        }
    }
    EXPECT_EQ(names, namesOf(ToolCatalogue::responsesTools(all)));
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 47u);
    EXPECT_EQ(types, (std::set<std::string>{"ARRAY", "BOOLEAN", "INTEGER", "NUMBER", "OBJECT", "STRING"}));
    EXPECT_EQ(dumpJson(ToolCatalogue::liveTools(all)), dumpJson(ToolCatalogue::tools()));
}

TEST(ToolCatalogue, flagsSelect)
{
    const std::tuple<const char*, ToolFlags, std::set<std::string>> rows[] = {
        {"no engine", {false, true, true, true}, {"do_task"}},
        {"no look-up", {true, false, true, true}, {"look_up"}},
        {"no linked apps", {true, true, false, true},
            {"connect_app", "check_connected_apps", "search_connected_tools", "execute_connected_tool"}},
    };
    const auto whole = namesOf(ToolCatalogue::responsesTools(all));
    for (const auto& [name, flags, expected] : rows) {
        std::set<std::string> missing(whole.begin(), whole.end());
        for (const std::string& present : namesOf(ToolCatalogue::responsesTools(flags)))
            missing.erase(present);
        EXPECT_EQ(missing, expected) << name;
    }
    EXPECT_EQ(ToolCatalogue::liveTools({}).size(), 3u) << "groups without tools are left out";
}

TEST(ToolCatalogue, extraPropertiesStandWhereTheyAreAccepted)
{
    for (const bool nextStep : {true, false}) {
        ToolFlags flags = all;
        flags.nextStep = nextStep;
        for (const Json& tool : ToolCatalogue::responsesTools(flags)) {
            const std::string name = readString(tool, "name").value_or("");
            const Json& properties = tool["parameters"]["properties"];
            EXPECT_EQ(properties.contains("plan_update"), ToolCatalogue::planUpdateTools.contains(name)) << name;
            EXPECT_EQ(properties.contains("then"), nextStep && ToolCatalogue::nextStepTools.contains(name)) << name;
        }
    }
    EXPECT_EQ(ToolCatalogue::planUpdateTools.size(), 20u);
    EXPECT_EQ(ToolCatalogue::nextStepTools.size(), 10u);
    EXPECT_TRUE(readString(ToolCatalogue::nextStepProperty(), "description")
                    .value_or("")
                    .starts_with("Optional, and worth giving whenever you can already tell"));
}

/// Its order is the order in which models are told about the tools.
TEST(ToolTraits, nameTheToolsOfTheCatalogue)
{
    std::vector<std::string> declared;
    std::vector<std::string> known;
    std::uint8_t group = 0;
    for (const Json& tools : ToolCatalogue::tools()) {
        for (const Json& declaration : tools["functionDeclarations"]) {
            const ToolTraits* tool = ToolTraits::find(readString(declaration, "name").value_or(""));
            ASSERT_TRUE(tool) << declaration;
            EXPECT_EQ(static_cast<std::uint8_t>(tool->group), group) << tool->name;
            declared.emplace_back(tool->name);
        }
        ++group;
    }
    for (const ToolTraits& tool : ToolTraits::all()) {
        known.emplace_back(tool.name);
        EXPECT_FALSE(tool.running.empty()) << tool.name;
        EXPECT_LE(tool.actsOnScreen, tool.changes) << tool.name;
    }
    EXPECT_EQ(known, declared);
    EXPECT_EQ(ToolTraits::find("set_reminders"), nullptr);
}

TEST(ToolCatalogue, listsFollowTheirNames)
{
    const auto names = [](const ToolNames& list) { return std::vector<std::string>(list.begin(), list.end()); };
    EXPECT_EQ(namesOf(ToolCatalogue::notebookTools()), names(ToolCatalogue::notebookToolNames));
    EXPECT_EQ(namesOf(ToolCatalogue::connectedAppTools()), names(ToolCatalogue::connectedAppToolNames));
}

TEST(ToolCatalogue, schemasBecomeJSONSchema)
{
    for (const auto& [name, lines] : test::fixtureRows("live/schemas.txt", 2))
        EXPECT_EQ(dumpJson(ToolCatalogue::jsonSchema(parseJson(lines[0]).value_or(Json()))), lines[1]) << name;
}

} // namespace quorvell
