// SPDX-License-Identifier: MIT
// Catches records that change on their way through JSON, and half-read ones that are taken for whole.
#include "QuorvellCore/automation/json/AutomationJson.h"

#include "FixtureTable.h"
#include "QuorvellCore/automation/json/AutomationHash.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <unordered_set>

namespace quorvell {

namespace {

constexpr std::string_view contextText =
    R"({"goal":"Write to Ann","observation":{"revision":7,"app":"Mail","window":"Inbox","page":"https://example.com",)"
    R"("candidates":[{"id":"1","role":"AXButton","label":"Send","value":"","enabled":true,"focused":false,"secure":false}]},)"
    R"("history":[{"operation":"click","target":"New","verified":true}],"image":"AQI="})";
constexpr std::string_view decisionText =
    R"({"kind":"action","message":"I'll choose it.","action":{"tool":"choose_menu","path":["File","New"]},)"
    R"("expected":{"kind":"labelAppeared","value":"To"}})";

Json changed(std::string_view text, const std::string& pointer, const Json& value)
{
    Json json = parseJson(text).value_or(Json());
    json[Json::json_pointer(pointer)] = value;
    return json;
}

/// Each line of the table is a place in the record and what is put there.
template <typename Record> void checkReading(const char* table, std::string_view text)
{
    for (const test::FixtureRow& row : test::fixtureRows(table)) {
        for (const std::string& line : row.lines) {
            const auto blank = line.find(' ');
            const Json json = changed(text, line.substr(0, blank), parseJson(line.substr(blank + 1)).value());
            EXPECT_EQ(AutomationJson::decode<Record>(json).has_value(), row.name == "read") << line;
        }
    }
}

} // namespace

TEST(AutomationJson, keepsEveryFieldUnderItsName)
{
    const auto context = AutomationJson::decode<DecisionContext>(parseJson(contextText).value_or(Json()));
    ASSERT_TRUE(context);
    EXPECT_EQ(context->image, (Bytes{1, 2}));
    EXPECT_EQ(dumpJson(AutomationJson::encode(*context)), contextText);
    const auto decision = AutomationJson::decode<AutomationDecision>(parseJson(decisionText).value_or(Json()));
    ASSERT_TRUE(decision);
    EXPECT_EQ(dumpJson(AutomationJson::encode(*decision)), decisionText);
    for (const AutomationAction::Tool tool : allAutomationTools)
        EXPECT_EQ(automationTool(storedText(tool)), tool);
    for (const Postcondition::Kind kind : allPostconditionKinds)
        EXPECT_EQ(postconditionKind(storedText(kind)), kind);
    for (const AutomationDecision::Kind kind : allDecisionKinds)
        EXPECT_EQ(decisionKind(storedText(kind)), kind);
}

TEST(AutomationJson, readsAllOrNothing)
{
    checkReading<AutomationDecision>("automation/decisions.txt", decisionText);
    checkReading<DecisionContext>("automation/contexts.txt", contextText);
    const Json tooMuch(std::string(Postcondition::longestValue + 1, 'x'));
    EXPECT_FALSE(AutomationJson::decode<AutomationDecision>(changed(decisionText, "/expected/value", tooMuch)));
    EXPECT_TRUE(AutomationJson::decode<AutomationDecision>(changed(decisionText, "/message", tooMuch)));
    for (const char* other : {"null", "[]", "{}", "7", "\"click\""})
        EXPECT_FALSE(AutomationJson::decode<AutomationAction>(parseJson(other).value_or(Json()))) << other;
}

TEST(AutomationJson, saysWhatItCut)
{
    Json json = changed(contextText, "/goal", std::string(10'000, 'g'));
    const Json candidate = json["observation"]["candidates"][0];
    const Json step = json["history"][0];
    for (int index = 0; index < 20'000; ++index)
        json["observation"]["candidates"].push_back(candidate);
    for (int index = 0; index < 1'000; ++index)
        json["history"].push_back(step);
    std::vector<std::string> problems;
    const auto context = AutomationJson::decode<DecisionContext>(json, problems);
    ASSERT_TRUE(context);
    EXPECT_EQ(problems.size(), 3u);
    EXPECT_EQ(context->goal.size(), DecisionContext::longestGoal);
    EXPECT_EQ(context->history.size(), DecisionContext::mostHistory);
    EXPECT_TRUE(context->observation.candidates.empty()) << "all have one id, so none could be meant";
}

TEST(AutomationHash, tellsRecordsApart)
{
    std::unordered_set<AutomationAction> actions;
    for (const auto& action : {AutomationAction{.target = "a"}, AutomationAction{.text = "a"},
             AutomationAction{.tool = AutomationAction::Tool::typeText, .target = "a"}, AutomationAction{.target = ""},
             AutomationAction{.path = std::vector<std::string>{"a", "b"}},
             AutomationAction{.path = std::vector<std::string>{"ab"}}, AutomationAction{.target = "a"}})
        actions.insert(action);
    EXPECT_EQ(actions.size(), 6u);
    std::unordered_set<std::size_t> hashes;
    for (const AutomationAction& action : actions)
        hashes.insert(std::hash<AutomationAction>{}(action));
    EXPECT_EQ(hashes.size(), 6u);
    const auto context = AutomationJson::decode<DecisionContext>(parseJson(contextText).value_or(Json()));
    DecisionContext other = *context;
    other.observation.candidates[0].focused = true;
    EXPECT_NE(std::hash<DecisionContext>{}(*context), std::hash<DecisionContext>{}(other));
}

} // namespace quorvell
