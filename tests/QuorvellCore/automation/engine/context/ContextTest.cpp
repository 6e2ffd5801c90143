// SPDX-License-Identifier: MIT
// Catches goals that are taken for another one, texts that a goal does not name, and secrets that leave the device.
#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/automation/engine/context/StepRisk.h"
#include "QuorvellCore/automation/engine/context/StepTaken.h"
#include "QuorvellCore/automation/engine/context/StepText.h"
#include "QuorvellCore/automation/engine/context/TellableContext.h"
#include "Screens.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(GoalWords, tellGoalsApart)
{
    EXPECT_EQ(GoalWords::of("  Open the\nSettings, please. "), "open the settings please");
    for (const auto& [one, other] : std::vector<std::pair<std::string, std::string>>{
             {"open the C++ page", "open the C page"}, {"set it to -5", "set it to 5"}, {"pay 1.5", "pay 15"},
             {"search for #rain", "search for rain"}, {"delete all", "delete"}})
        EXPECT_NE(GoalWords::of(one), GoalWords::of(other)) << one;
    EXPECT_EQ(GoalWords::of("Save…"), GoalWords::of("save!"));
}

TEST(GoalWords, nameWhatStandsInThemWhole)
{
    struct Row {
        const char* goal;
        const char* text;
        bool isNamed;
    };
    const Row rows[] = {
        {"search for tomatoes", "tomatoes", true},
        {"search for \"red tomatoes\".", "red tomatoes", true},
        {"search for red\n tomatoes", "red tomatoes", true},
        {"search for tomatoes", "Tomatoes", false},
        {"search for tomatoes", "tomato", false},
        {"search for c++", "c", false},
        {"search for c", "c++", false},
        {"set it to -5", "5", false},
        {"set it to 15", "5", false},
        {"search for tomatoes", "for  tomatoes", false},
        {"search for tomatoes", " tomatoes", false},
        {"search for tomatoes", "", false},
        {"aa a", "a", true},
    };
    for (const Row& row : rows)
        EXPECT_EQ(GoalWords::names(row.goal, row.text), row.isNamed) << row.goal << ": " << row.text;
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
    using Tool = AutomationAction::Tool;
    const AutomationObservation screen = test::screenWith({test::element("AXButton", "Delete \"all\""),
        test::element("AXTextField", "Password hint"), test::element("AXTextArea", "")});
    struct Row {
        AutomationAction action;
        const char* target;
        const char* told;
        ActionRisk::Case risk;
    };
    const Row rows[] = {
        {{.tool = Tool::click, .target = "Delete \"all\""}, "Delete \"all\"", "I'll press \"Delete 'all'\".",
            ActionRisk::Case::never},
        {{.tool = Tool::typeText, .target = "", .text = "hello"}, "AXTextArea", "I'll type into \"AXTextArea\".",
            ActionRisk::Case::safe},
        {{.tool = Tool::typeText, .target = "", .text = "4111111111111111"}, "AXTextArea",
            "I'll type into \"AXTextArea\".", ActionRisk::Case::never},
        {{.tool = Tool::pressKey, .key = "command+w"}, "command+w", "I'll press command+w.",
            ActionRisk::Case::askFirst},
        {{.tool = Tool::scroll, .target = "", .direction = "up"}, "up in AXTextArea", "I'll scroll up in AXTextArea.",
            ActionRisk::Case::safe},
        {{.tool = Tool::chooseMenu, .path = {{"File", "Send"}}}, "File > Send", "I'll choose \"File > Send\".",
            ActionRisk::Case::askFirst},
        {{.tool = Tool::openApp, .name = "TeamViewer"}, "TeamViewer", "I'll open \"TeamViewer\".",
            ActionRisk::Case::never},
        {{.tool = Tool::openWebsite, .address = "file:///etc"}, "file:///etc", "I'll open \"file:///etc\".",
            ActionRisk::Case::never},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.told);
        EXPECT_EQ(stepTaken(row.action, screen, true),
            (AutomationHistory{std::string(storedText(row.action.tool)), row.target, true}));
        EXPECT_EQ(stepAnnouncement(row.action, screen), row.told);
        EXPECT_EQ(stepRisk(row.action, screen).kind, row.risk);
    }
}

} // namespace quorvell
