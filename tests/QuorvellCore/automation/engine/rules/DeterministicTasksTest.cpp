// SPDX-License-Identifier: MIT
// Catches rules that guess, and a task that is called finished though nothing shows it.
#include "QuorvellCore/automation/engine/rules/DeterministicTasks.h"

#include "Screens.h"

namespace quorvell {

namespace {

using test::element;

const std::vector<std::string> applications = {"Terminal", "Text Editor", "Music"};

AutomationObservation plainScreen()
{
    AutomationObservation screen =
        test::screenWith({element("AXButton", "Back"), element("AXButton", "Next"), element("AXButton", "Save"),
            element("AXButton", "Reset button"), element("AXTab", "Music"), element("AXLink", "Open"),
            element("AXButton", "Undo"), element("AXStaticText", "Welcome"), element("AXButton", "Send"),
            element("AXButton", "Delete everything"), element("AXLink", "C++"), element("AXButton", "Open")});
    screen.candidates[6].enabled = false;
    screen.candidates.back().id = "the second";
    return screen;
}

std::string plainText(const std::optional<AutomationDecision>& decision)
{
    if (!decision)
        return "-";
    const AutomationAction& action = decision->action.value();
    return std::string(storedText(action.tool)) + " "
        + action.target.value_or(action.direction.value_or(action.name.value_or(action.address.value_or(""))));
}

} // namespace

TEST(DeterministicTasks, decideWhatIsCertain)
{
    for (const auto& [name, lines] : test::fixtureRows("automation/plainGoals.txt", 2)) {
        const auto decision = DeterministicTasks::decide({lines[0], plainScreen(), {}, {}}, applications);
        EXPECT_EQ(plainText(decision), lines[1]) << name << ": " << lines[0];
        EXPECT_TRUE(!decision || (decision->expected && decision->action->isValid(plainScreen()))) << lines[0];
    }
    EXPECT_FALSE(DeterministicTasks::decide({"open terminal", plainScreen(), {}, {}})) << "nobody said what there is";
    EXPECT_FALSE(DeterministicTasks::decide({"click Next" + std::string(200, ' '), plainScreen(), {}, {}}));
}

TEST(DeterministicTasks, areFinishedOnceTheOneStepIsVerified)
{
    for (const auto& [name, lines] : test::fixtureRows("automation/plainEnds.txt", 3)) {
        DecisionContext context{lines[0], test::screenWith({}), {}, {}};
        for (const Json& step : parseJson(lines[1]).value_or(Json()))
            context.history.push_back(test::recordOf<AutomationHistory>(dumpJson(step)));
        const auto decision = DeterministicTasks::decide(context, applications);
        EXPECT_EQ(decision ? decision->message : "-", lines[2]) << name;
        EXPECT_TRUE(!decision || decision->kind == AutomationDecision::Kind::finished) << name;
    }
}

} // namespace quorvell
