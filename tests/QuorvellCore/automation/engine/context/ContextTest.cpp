// SPDX-License-Identifier: MIT
// Catches goals that are taken for another one, texts that a goal does not name, and secrets that leave the device.
#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/automation/engine/context/StepRisk.h"
#include "QuorvellCore/automation/engine/context/StepTaken.h"
#include "QuorvellCore/automation/engine/context/StepText.h"
#include "QuorvellCore/automation/engine/context/TellableContext.h"
#include "Screens.h"

namespace quorvell {

TEST(GoalWords, tellGoalsApart)
{
    EXPECT_EQ(GoalWords::of("  Open the\nSettings, please. "), "open the settings please");
    EXPECT_EQ(GoalWords::of("Save…"), GoalWords::of("save!"));
    for (const auto& [one, other] : {std::pair("open the C++ page", "open the C page"), {"set it to -5", "set it to 5"},
             {"pay 1.5", "pay 15"}, {"search for #rain", "search for rain"}})
        EXPECT_NE(GoalWords::of(one), GoalWords::of(other)) << one;
    for (const auto& [name, lines] : test::fixtureRows("automation/namedTexts.txt")) {
        for (const std::string& line : lines)
            EXPECT_EQ(GoalWords::names(test::cells(line).at(0), test::cells(line).at(1)), name == "named") << line;
    }
}

TEST(TellableContext, holdsNoSecret)
{
    AutomationObservation screen = test::screenWith({test::element("AXTextField", "Card number", "4111111111111111"),
        test::element("AXTextField", "Search", "rain"), test::element("AXButton", "Go")});
    screen.candidates.push_back(screen.candidates[1]);
    screen.candidates.back().label = "another one of the same id";
    const DecisionContext told = tellableContext(
        {"find rain", screen, {{"type_text", "4111 1111 1111 1111", true}, {"click", "Go", true}}, Bytes{1}}, 4);
    ASSERT_EQ(told.observation.candidates.size(), 3u) << "the first of each id";
    EXPECT_EQ(told.observation.candidates[0].value, "");
    EXPECT_EQ(told.observation.candidates[1].value, "rain");
    EXPECT_EQ(told.history, (std::vector<AutomationHistory>{{"type_text", "", true}, {"click", "Go", true}}));
    EXPECT_FALSE(told.image);
    EXPECT_EQ(tellableContext({"", screen, {}, {}}, 1).observation.candidates.size(), 1u);
}

TEST(Steps, areWrittenJudgedAndTold)
{
    const AutomationObservation screen =
        test::screenWith({test::element("AXButton", "Delete \"all\""), test::element("AXTextArea", "")});
    const auto verdict = [](const ActionRisk& risk) {
        const bool asks = risk.kind == ActionRisk::Case::askFirst;
        return risk.isSafe() ? "safe" : asks ? "asks" : "never";
    };
    for (const auto& [name, lines] : test::fixtureRows("automation/steps.txt", 2)) {
        const auto action = test::recordOf<AutomationAction>(lines[0]);
        EXPECT_EQ(stepTaken(action, screen, true).target + " | " + verdict(stepRisk(action, screen)) + " | "
                + stepAnnouncement(action, screen),
            lines[1])
            << name;
    }
}

} // namespace quorvell
