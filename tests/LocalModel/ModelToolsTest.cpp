// SPDX-License-Identifier: MIT
// Catches a call of a tool that was never offered, or with arguments that are none of its own.
#include "LocalModel/ModelTools.h"

#include "QuorvellCore/live/tools/ToolCatalogue.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(ModelTools, takesOnlyWhatWasDeclared)
{
    const ModelTools tools(ToolCatalogue::notebookTools());
    struct Row {
        const char* name;
        const char* tool;
        std::string arguments;
        const char* problem; ///< A part of it; empty for none.
    };
    const Row rows[] = {
        {"a reminder", "set_reminder", R"({"text":"tomorrow at 5 pm to eat"})", ""},
        {"no arguments", "set_reminder", "{}", ""},
        {"a choice", "explain", R"({"question":"why","text":"so","level":"simple"})", ""},
        {"a list", "save_how_to", R"({"title":"a","goal":"b","steps":["c"]})", ""},
        {"inside an object", "change_event", R"({"id":"a","changes":{"title":"b"}})", ""},
        {"a made-up tool", "format_disk", "{}", "no tool of that name"},
        {"no name", "", "{}", "no tool of that name"},
        {"an argument too many", "read_note", R"({"id":"a","force":true})", "no argument \"force\""},
        {"an argument that is a trap", "read_note", R"({"id":"a","\u001b[2J":1})", "no argument \"other\""},
        {"the way back is the user's", "keep_note", R"({"undo":"u1"})", "no argument \"undo\""},
        {"an argument too few", "explain", R"({"question":"why"})", "is missing"},
        {"another type", "read_note", R"({"id":7})", "of the type string"},
        {"another value", "explain", R"({"question":"why","text":"so","level":"rude"})", "one of the values"},
        {"another type in a list", "save_how_to", R"({"title":"a","goal":"b","steps":[1]})", "of the type string"},
        {"another type in an object", "change_event", R"({"id":"a","changes":{"all_day":"yes"}})",
            "of the type boolean"},
        {"no object", "read_note", "[]", "one JSON object"},
        {"no JSON", "read_note", "{", "one JSON object"},
        {"large", "read_note", "{\"id\":\"" + std::string(ModelTools::longestArguments, 'a') + "\"}",
            "one JSON object"},
        {"deep", "read_note", "{\"id\":" + std::string(40, '[') + std::string(40, ']') + "}", "one JSON object"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string problem = tools.problem(row.tool, row.arguments).value_or("");
        EXPECT_EQ(problem.empty(), *row.problem == '\0') << problem;
        EXPECT_NE(problem.find(row.problem), std::string::npos) << problem;
    }
}

TEST(ModelTools, areToldInShort)
{
    Json declarations = ToolCatalogue::responsesTools({});
    const ModelTools all(declarations);
    EXPECT_EQ(all.declared().size(), declarations.size());
    EXPECT_LT(dumpJson(all.declared()).size() * 4, dumpJson(declarations).size() * 3)
        << "shorter by a quarter at least";
    const Json& function = all.declared()[0]["function"];
    EXPECT_EQ(function["parameters"]["type"], "object");
    EXPECT_EQ(memberOf(function["parameters"]["properties"], "plan_update"), nullptr);

    Json many = Json::array();
    for (int count = 0; count < 1000; ++count)
        many.push_back({{"name", "tool" + std::to_string(count)}, {"description", std::string(100'000, 'a')}});
    EXPECT_LT(dumpJson(ModelTools(many).declared()).size(), 2 * ModelTools::mostBytes);
}

} // namespace quorvell
