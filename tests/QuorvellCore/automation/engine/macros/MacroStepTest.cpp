// SPDX-License-Identifier: MIT
// Catches private text that is kept, and steps that are done to something else than was meant.
#include "QuorvellCore/automation/engine/macros/MacroStep.h"

#include "QuorvellCore/automation/engine/macros/KeepableText.h"
#include "Screens.h"

namespace quorvell {

namespace {

using test::element;
using Tool = AutomationAction::Tool;

AutomationObservation macroScreen()
{
    AutomationObservation screen = test::screenWith({element("AXButton", "Search"), element("AXTextField", "Find"),
        element("AXTextField", "PIN"), element("AXButton", "Twice"), element("AXLink", "Call 030 123 456 78")});
    screen.candidates.push_back(element("AXButton", "Twice"));
    screen.candidates.back().id = "Twice, the second";
    screen.candidates.push_back({.id = "nameless", .role = "AXButton", .enabled = true});
    return screen;
}

} // namespace

TEST(MacroStep, learnsNothingPrivateAndNothingUnclear)
{
    for (const auto& [name, lines] : test::fixtureRows("automation/macroSteps.txt")) {
        for (const std::string& line : lines) {
            const Json pair = parseJson(line).value_or(Json());
            const auto learnt = MacroStep::learnt(test::recordOf<AutomationAction>(dumpJson(pair[0])),
                test::recordOf<Postcondition>(dumpJson(pair[1])), macroScreen(), "search for Red Rain");
            EXPECT_EQ(learnt.has_value(), name.starts_with("learnt")) << line;
        }
    }
    const AutomationAction longMenu{.tool = Tool::chooseMenu, .path = {{std::string(501, 'x')}}};
    EXPECT_FALSE(MacroStep::learnt(longMenu, test::changed, macroScreen(), ""));
    for (const char* goal : {"my card is 4111 1111 1111 1111", "set the PIN", "call 030/12345678"})
        EXPECT_FALSE(KeepableText::isPublicGoal(goal)) << goal;
}

TEST(MacroStep, isDoneOnlyWhereItsScreenIs)
{
    const std::string goal = "search for Red Rain";
    const AutomationAction typing{.tool = Tool::typeText, .target = "Find", .text = "Red Rain"};
    const MacroStep step = MacroStep::learnt(typing, test::changed, macroScreen(), goal).value_or(MacroStep{});
    const Json known = AutomationJson::encode(DecisionContext{goal, macroScreen(), {}, {}});
    for (const auto& [name, lines] : test::fixtureRows("automation/macroScreens.txt")) {
        for (const std::string& line : lines) {
            const auto [place, value] = test::verbAndRest(line);
            Json json = known;
            json[Json::json_pointer(place)] = parseJson(value).value_or(Json());
            const auto context = test::recordOf<DecisionContext>(dumpJson(json));
            const auto decision = step.decide(context);
            EXPECT_EQ(decision.has_value(), name.starts_with("done")) << line;
            EXPECT_TRUE(!decision || decision->action->isValid(context.observation)) << line;
        }
    }
    MacroStep forbidden =
        MacroStep::learnt({.tool = Tool::openApp, .name = "Notes"}, test::changed, macroScreen(), "open notes")
            .value_or(MacroStep{});
    forbidden.action.name = "TeamViewer";
    EXPECT_FALSE(forbidden.decide({"open notes", macroScreen(), {}, {}})) << "what the guard forbids";
}

} // namespace quorvell
