// SPDX-License-Identifier: MIT
// Catches half an answer that is taken for a decision, and a model that is not told what was wrong with its own.
#include "QuorvellCore/automation/engine/planner/PlannerReply.h"

#include "Screens.h"

#include <algorithm>

namespace quorvell {

namespace {

std::string replyText(const std::variant<std::string, DecisionError>& read)
{
    const auto* error = std::get_if<DecisionError>(&read);
    return error ? "> " + error->message : std::get<std::string>(read);
}

} // namespace

TEST(PlannerReply, isReadInEachForm)
{
    for (const auto& [name, lines] : test::fixtureRows("automation/plannerReplies.txt", 2)) {
        const std::string form = name.substr(0, name.find_first_of(":,"));
        const auto style = std::find_if(allPlannerStyles.begin(), allPlannerStyles.end(),
            [&](PlannerStyle candidate) { return storedText(candidate) == form; });
        ASSERT_NE(style, allPlannerStyles.end()) << name;
        EXPECT_EQ(replyText(readPlannerReply(*style, parseJson(lines[0]).value_or(Json()))), lines[1]) << name;
    }
    for (const PlannerStyle style : allPlannerStyles) {
        for (const Json& other : {Json(), Json(7), Json::array(), Json::object()})
            EXPECT_EQ(replyText(readPlannerReply(style, other)), "> The planner's answer holds no decision.");
    }
    const Json part = {{"type", "text"}, {"text", std::string(longestDecisionText + 1, 'x')}};
    const auto tooLong = readPlannerReply(PlannerStyle::messages, {{"content", Json::array({part})}});
    EXPECT_EQ(std::get<DecisionError>(tooLong).kind, DecisionError::Kind::tooLarge);
}

TEST(PlannerReply, holdsOneDecisionOrSaysWhyNot)
{
    for (const auto& [name, lines] : test::fixtureRows("automation/plannerDecisions.txt", 2)) {
        const auto read = readDecision(lines[0]);
        const auto* problem = std::get_if<DecisionProblem>(&read);
        EXPECT_EQ(problem ? problem->text : "read", lines[1]) << name;
    }
    const auto finished = readDecision(R"({"kind":"finished","message":"Done.","action":{"tool":"click"}})");
    EXPECT_FALSE(std::get<AutomationDecision>(finished).action) << "what is finished does nothing more";
}

TEST(PlannerReply, saysWhatCannotBeDone)
{
    AutomationObservation screen = test::screenWith({test::element("AXButton", "Go"), test::element("AXButton", "Dim"),
        test::element("AXButton", "Same"), test::element("AXButton", "Same")});
    screen.candidates[1].enabled = false;
    for (const auto& [name, lines] : test::fixtureRows("automation/stepProblems.txt", 2)) {
        const auto action = test::recordOf<AutomationAction>(lines[0]);
        const auto problem = decisionProblem({AutomationDecision::Kind::action, "", action, {}}, screen);
        EXPECT_EQ(problem ? problem->text : "-", lines[1]) << lines[0];
    }
}

} // namespace quorvell
