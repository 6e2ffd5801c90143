// SPDX-License-Identifier: MIT
// Catches a next step that is taken on a guess, or never answered for.
#include "Quorvell/actions/tasks/NextStepFollower.h"

#include "TaskParts.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(NextStepFollower, takesOnlyWhatTheSelectorIsSureOf)
{
    test::TaskParts parts;
    const StepDecider decider = [](const DecisionContext&, const std::stop_token&) { return StepAnswer(); };
    NextStepFollower follower({parts.actions, parts.deciding, decider});
    const auto press = [](const char* id) {
        return StepAnswer(RoutedDecision{{AutomationDecision::Kind::action, "", AutomationAction{.target = id}, {}}});
    };
    const Json click{{"tool", "click"}, {"arguments", {{"element_id", "e2"}}}};
    struct Row {
        const char* name;
        Json then;
        StepAnswer answer;
        std::string goal; ///< That the selector is asked for; empty: it is not asked.
        bool isTaken;
    };
    const Row rows[] = {
        {"an element of the look before, by its name", click, press("e1"), "Shop\nNext step: click “Search”", true},
        {"words", "press Search", press("e1"), "Shop\nNext step: press Search", true},
        {"not sure", click, DecisionError{}, "Shop\nNext step: click “Search”", false},
        {"an element that is not there", click, press("e9"), "Shop\nNext step: click “Search”", false},
        {"an id that nobody knows", {{"tool", "click"}, {"arguments", {{"element_id", "e9"}}}}, press("e1"), "", false},
        {"nothing", nullptr, press("e1"), "", false},
        {"rubbish", {{"arguments", 3}}, press("e1"), "", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        parts.deciding.contexts.clear();
        parts.deciding.answers = {row.answer};
        std::vector<bool> taken;
        follower.follow(
            {"c1", row.then, "Shop", test::lookWith({"Orders", "Search"}).observation, parts.actions.screen, {}},
            [&](const std::optional<ActionResult>& result) { taken.push_back(result.has_value()); });
        parts.scheduler.settle();
        EXPECT_EQ(taken, std::vector<bool>{row.isTaken});
        EXPECT_EQ(parts.deciding.contexts.empty() ? "" : parts.deciding.contexts[0].goal, row.goal);
    }
    // Given up while it is sought: answered, and nothing is done.
    parts.deciding.answers = {press("e1")};
    const std::size_t before = parts.actions.actions.size();
    int answers = 0;
    follower.follow({"c1", click, "", test::lookWith({"Orders", "Search"}).observation, parts.actions.screen, {}},
        [&](const std::optional<ActionResult>& result) { answers += result ? 10 : 1; });
    follower.giveUp();
    parts.scheduler.settle();
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(parts.actions.actions.size(), before);
}

} // namespace quorvell
