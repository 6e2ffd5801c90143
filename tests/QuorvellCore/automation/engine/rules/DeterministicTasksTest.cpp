// SPDX-License-Identifier: MIT
// Catches rules that guess, and a task that is called finished though nothing shows it.
#include "QuorvellCore/automation/engine/rules/DeterministicTasks.h"

#include "FixtureTable.h"
#include "Screens.h"

#include <gtest/gtest.h>

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
    struct Row {
        const char* goal;
        std::vector<AutomationHistory> history;
        const char* report;
    };
    const Row rows[] = {
        {"scroll down", {{"scroll", "down", true}}, "I scrolled down."},
        {"scroll down", {{"scroll", "down", false}}, "-"},
        {"scroll down", {{"scroll", "up", true}}, "-"},
        {"scroll down", {{"scroll", "down", true}, {"scroll", "down", true}}, "-"},
        {"go back", {{"click", "Back", true}}, "I went back."},
        {"open example.com", {{"open_website", "example.com", true}}, "\"example.com\" is open."},
        {"open example.com", {{"open_website", "example.org", true}}, "-"},
        {"open terminal", {{"open_app", "Terminal", true}}, "\"Terminal\" is open."},
        {"press the save button", {{"click", "Save", true}}, "I pressed \"Save\"."},
        {"press the save button", {{"click", "Open", true}}, "-"},
        {"press the save button", {{"press_key", "Save", true}}, "-"},
        {"Next", {{"click", "Next", true}}, "I pressed \"Next\"."},
    };
    for (const Row& row : rows) {
        const auto decision =
            DeterministicTasks::decide({row.goal, test::screenWith({}), row.history, {}}, applications);
        EXPECT_EQ(decision ? decision->message : "-", row.report) << row.goal;
        EXPECT_TRUE(!decision || decision->kind == AutomationDecision::Kind::finished);
    }
}

} // namespace quorvell
