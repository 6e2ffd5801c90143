// SPDX-License-Identifier: MIT
// Catches private text that is kept, and steps that are done to something else than was meant.
#include "QuorvellCore/automation/engine/macros/MacroStep.h"

#include "QuorvellCore/automation/engine/macros/KeepableText.h"
#include "Screens.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using test::element;
using Tool = AutomationAction::Tool;
using Kind = Postcondition::Kind;

AutomationObservation macroScreen()
{
    AutomationObservation screen = test::screenWith({element("AXButton", "Search"), element("AXTextField", "Find"),
        element("AXTextField", "PIN"), element("AXButton", "Twice"), element("AXLink", "Call 030 123 456 78")});
    screen.candidates.push_back(element("AXButton", "Twice"));
    screen.candidates.back().id = "Twice, the second";
    screen.candidates.push_back({.id = "nameless", .role = "AXButton", .enabled = true});
    return screen;
}

const Postcondition changed{Kind::changed, ""};

} // namespace

TEST(MacroStep, learnsNothingPrivateAndNothingUnclear)
{
    struct Row {
        const char* name;
        AutomationAction action;
        Postcondition expected;
        bool isLearnt;
    };
    const Row rows[] = {
        {"a button", {.tool = Tool::click, .target = "Search"}, changed, true},
        {"one of two", {.tool = Tool::click, .target = "Twice"}, changed, false},
        {"one without a label", {.tool = Tool::click, .target = "nameless"}, changed, false},
        {"one that is not there", {.tool = Tool::click, .target = "Gone"}, changed, false},
        {"a label with a telephone number", {.tool = Tool::click, .target = "Call 030 123 456 78"}, changed, false},
        {"only the user can tell", {.tool = Tool::click, .target = "Search"}, {Kind::userCheck, "sent"}, false},
        {"nothing is expected", {.tool = Tool::click, .target = "Search"}, {Kind::labelAppeared, ""}, false},
        {"a card number appears", {.tool = Tool::click, .target = "Search"},
            {Kind::labelAppeared, "4111 1111 1111 1111"}, false},
        {"what the goal names", {.tool = Tool::typeText, .target = "Find", .text = "Red Rain"},
            {Kind::valueContains, "red rain"}, true},
        {"what it does not name", {.tool = Tool::typeText, .target = "Find", .text = "my diary"}, changed, false},
        {"half of what it names", {.tool = Tool::typeText, .target = "Find", .text = "Rai"}, changed, false},
        {"what it expects is not named", {.tool = Tool::typeText, .target = "Find", .text = "Red Rain"},
            {Kind::valueContains, "secret"}, false},
        {"into a private box", {.tool = Tool::typeText, .target = "PIN", .text = "Red Rain"}, changed, false},
        {"into a button", {.tool = Tool::typeText, .target = "Search", .text = "Red Rain"}, changed, false},
        {"a key", {.tool = Tool::pressKey, .key = "return"}, {Kind::labelAppeared, "Results"}, true},
        {"no key", {.tool = Tool::pressKey, .key = "any"}, changed, false},
        {"a key with a text beside it", {.tool = Tool::pressKey, .text = "diary", .key = "return"}, changed, false},
        {"a site", {.tool = Tool::openWebsite, .address = "https://example.com/shop"}, {Kind::site, "example.com/shop"},
            true},
        {"an address with a query", {.tool = Tool::openWebsite, .address = "https://example.com/?q=diary"}, changed,
            false},
        {"an address with a name", {.tool = Tool::openWebsite, .address = "https://me@example.com/"}, changed, false},
        {"an address with a code",
            {.tool = Tool::openWebsite, .address = "https://example.com/reset/" + std::string(41, 'a')}, changed,
            false},
        {"a menu", {.tool = Tool::chooseMenu, .path = {{"File", "New"}}}, changed, true},
        {"a menu of six", {.tool = Tool::chooseMenu, .path = {{"1", "2", "3", "4", "5", "6"}}}, changed, false},
        {"an application", {.tool = Tool::openApp, .name = "Notes"}, {Kind::app, "Notes"}, true},
        {"a name too long to keep", {.tool = Tool::chooseMenu, .path = {{std::string(501, 'x')}}}, changed, false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(
            MacroStep::learnt(row.action, row.expected, macroScreen(), "search for Red Rain").has_value(), row.isLearnt)
            << row.name;
    for (const char* goal : {"my card is 4111 1111 1111 1111", "set the PIN", "call 030/12345678"})
        EXPECT_FALSE(KeepableText::isPublicGoal(goal)) << goal;
}

TEST(MacroStep, isDoneOnlyWhereItsScreenIs)
{
    const auto step = MacroStep::learnt(
        {.tool = Tool::typeText, .target = "Find", .text = "Red Rain"}, changed, macroScreen(), "search for Red Rain");
    ASSERT_TRUE(step);
    struct Row {
        const char* name;
        void (*change)(DecisionContext&);
        bool isDone;
    };
    const Row rows[] = {
        {"the same screen", [](DecisionContext&) {}, true},
        {"other ids and values",
            [](DecisionContext& context) {
                context.observation.candidates[1].id = "17";
                context.observation.candidates[1].value = "before";
            },
            true},
        {"another page of the site",
            [](DecisionContext& context) { context.observation.page = "https://example.com/else"; }, true},
        {"another site", [](DecisionContext& context) { context.observation.page = "https://example.org"; }, false},
        {"no page", [](DecisionContext& context) { context.observation.page.reset(); }, false},
        {"another application", [](DecisionContext& context) { context.observation.app = "Mail"; }, false},
        {"another label", [](DecisionContext& context) { context.observation.candidates[1].label = "find"; }, false},
        {"another role", [](DecisionContext& context) { context.observation.candidates[1].role = "AXComboBox"; },
            false},
        {"there twice",
            [](DecisionContext& context) {
                context.observation.candidates.push_back(context.observation.candidates[1]);
                context.observation.candidates.back().id = "another";
            },
            false},
        {"disabled", [](DecisionContext& context) { context.observation.candidates[1].enabled = false; }, false},
        {"became a box for passwords",
            [](DecisionContext& context) { context.observation.candidates[1].secure = true; }, false},
        {"the goal names another text", [](DecisionContext& context) { context.goal = "search for Rain"; }, false},
        {"the goal writes it otherwise", [](DecisionContext& context) { context.goal = "search for red rain"; }, false},
    };
    for (const Row& row : rows) {
        DecisionContext context{"search for Red Rain", macroScreen(), {}, {}};
        row.change(context);
        const auto decision = step->decide(context);
        ASSERT_EQ(decision.has_value(), row.isDone) << row.name;
        EXPECT_TRUE(!decision || decision->action->isValid(context.observation)) << row.name;
    }
    const auto deletion =
        MacroStep::learnt({.tool = Tool::openApp, .name = "Notes"}, changed, macroScreen(), "open notes");
    MacroStep forbidden = deletion.value_or(MacroStep{});
    forbidden.action.name = "TeamViewer";
    EXPECT_FALSE(forbidden.decide({"open notes", macroScreen(), {}, {}})) << "what the guard forbids";
}

} // namespace quorvell
