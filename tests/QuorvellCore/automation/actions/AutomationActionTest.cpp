// SPDX-License-Identifier: MIT
// Catches actions that are carried out though what they are meant for is not there, is another, or is a secret.
#include "QuorvellCore/automation/actions/AutomationAction.h"

#include "FixtureTable.h"
#include "QuorvellCore/automation/json/AutomationJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

AutomationAction action(const std::string& json)
{
    const auto parsed = parseJson(json);
    const auto decoded = parsed ? AutomationJson::decode<AutomationAction>(*parsed) : std::nullopt;
    EXPECT_TRUE(decoded) << json;
    return decoded.value_or(AutomationAction{});
}

std::string repeated(std::string_view text, std::size_t count)
{
    std::string result;
    for (; count > 0; --count)
        result += text;
    return result;
}

} // namespace

TEST(AutomationAction, isValidOnlyForWhatIsThere)
{
    const AutomationObservation screen{
        .candidates = {{"field", "AXTextField", "", "", true}, {"area", "AXTextArea", "", "", true},
            {"combo", "AXComboBox", "", "", true}, {"button", "AXButton", "", "", true},
            {"search", "AXSearchField", "", "", true}, {"off", "AXTextField"}, {"", "AXButton"},
            {"secret", "AXTextField", "", "", true, false, true}, {"twice", "AXButton", "", "", true},
            {"twice", "AXButton"}}};
    for (const test::FixtureRow& row : test::fixtureRows("automation/actions.txt")) {
        for (const std::string& json : row.lines)
            EXPECT_EQ(action(json).isValid(screen), row.name == "valid") << json;
    }
    for (const std::string_view key : AutomationAction::supportedKeys())
        EXPECT_TRUE(action(dumpJson(Json{{"tool", "press_key"}, {"key", key}})).isValid({})) << key;

    const std::string family = "👨‍👩‍👧"; // one character of 8 UTF-16 units
    const struct {
        const char* argument;
        std::string fits;
        std::string tooLong;
    } lengths[] = {
        {"text", std::string(4000, 'x'), std::string(4001, 'x')},
        {"text", repeated("e\u0301", 4000), repeated("e\u0301", 4000) + "x"},
        {"text", repeated(family, 1000), repeated(family, 1000) + "x"},
        {"text", "x" + repeated("\u0301", 7999), "x" + repeated("\u0301", 8000)}, // one character
        {"path", repeated("😀", 80), repeated("😀", 80) + "x"},
        {"name", std::string(120, 'x'), std::string(120, 'x') + " "}, // counted as it is
        {"address", std::string(2048, 'x'), std::string(2049, 'x')},
    };
    const auto with = [](const std::string& argument, const std::string& value) {
        const std::string tool = argument == "text" ? "type_text"
            : argument == "path"                    ? "choose_menu"
            : argument == "name"                    ? "open_app"
                                                    : "open_website";
        return action(dumpJson(Json{
            {"tool", tool}, {"target", "field"}, {argument, argument == "path" ? Json::array({value}) : Json(value)}}));
    };
    for (const auto& row : lengths) {
        EXPECT_TRUE(with(row.argument, row.fits).isValid(screen)) << row.fits.substr(0, 20);
        EXPECT_FALSE(with(row.argument, row.tooLong).isValid(screen)) << row.fits.substr(0, 20);
    }
}

TEST(AutomationAction, argumentsAreThoseOfTheModelsTool)
{
    EXPECT_EQ(dumpJson(action(R"({"direction": "up", "target": "7", "tool": "scroll"})").arguments()),
        R"({"element_id":"7","direction":"up"})");
    EXPECT_EQ(dumpJson(action(R"({"tool": "choose_menu", "path": ["File"], "name": "", "key": null})").arguments()),
        R"({"path":["File"],"name":""})");
}

} // namespace quorvell
