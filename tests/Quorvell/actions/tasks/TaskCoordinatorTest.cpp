// SPDX-License-Identifier: MIT
// Catches a plan that is closed without evidence, and counts of a task that tell less than was done and asked.
#include "Quorvell/actions/tasks/TaskCoordinator.h"

#include "TaskParts.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

class TaskCoordinatorTest : public testing::Test, public test::TaskParts {
protected:
    /// As calls are handed out: the plan is changed first.
    void start(const Json& args)
    {
        plan = TaskPlan::create(args).value_or(plan);
        coordinator.startTask({"c1", "start_task", args}, answers.reply());
    }
    std::string finish(const char* evidence = "")
    {
        coordinator.taskFinished({"c2", "task_finished", {{"evidence", evidence}}}, answers.reply());
        scheduler.settle();
        return answers.last("status");
    }
    void did(ActionResult::Kind kind, bool isVerified, std::optional<Postcondition> expected)
    {
        coordinator.actionEnded({.expected = std::move(expected)}, {.kind = kind, .isVerified = isVerified});
    }

    TaskPlan plan;
    int began = 0;
    int ended = 0;
    TaskCoordinator coordinator{{log, actions, [this]() -> const TaskPlan& { return plan; },
        [this] {
            plan = {};
            ++ended;
        },
        telling.screen, [this] { ++began; }, {}}};
    const Postcondition orders{Postcondition::Kind::labelAppeared, "Orders"};
};

const Json task{{"goal", "See my orders"}, {"steps", {"Open them"}}, {"done_when", "The orders search is shown"}};

} // namespace

TEST_F(TaskCoordinatorTest, keepsThePlanTrue)
{
    start({{"goal", ""}, {"steps", {"Open them"}}});
    coordinator.updatePlan({"c1", "update_plan", {{"done", {1}}}}, answers.reply());
    EXPECT_EQ(finish(), "refused");
    EXPECT_EQ(began, 0);
    start(task);
    EXPECT_EQ(began, 1);
    plan.update({{"done", {7}}});
    coordinator.updatePlan({"c1", "update_plan", {{"done", {7}}}}, answers.reply());
    EXPECT_NE(dumpJson(answers.all.back()).find("There is no step 7"), std::string::npos);
}

TEST_F(TaskCoordinatorTest, closesThePlanOnlyOnEvidence)
{
    using Kind = ActionResult::Kind;
    start(task);
    did(Kind::done, true, orders);
    EXPECT_EQ(finish(), "refused"); // A step is open.
    plan.update({{"done", {1}}});
    did(Kind::needsYes, false, orders);
    EXPECT_EQ(finish(), "refused"); // A question is.
    coordinator.questionEnded({}, ActionObserver::QuestionEnd::refused, {});
    did(Kind::done, true, {});
    EXPECT_EQ(actions.looks, 0);
    EXPECT_EQ(finish("The orders are shown"), "refused"); // Something changed, and the screen does not show it.
    EXPECT_EQ(actions.looks, 1);
    EXPECT_EQ(answers.last("screen"), "screen Example Shop");
    actions.problem = "The screen is locked.";
    EXPECT_EQ(finish(), "refused");
    EXPECT_NE(answers.last("message").find("The screen is locked."), std::string::npos);
    actions.problem.clear();
    did(Kind::refused, false, orders);
    EXPECT_EQ(ended, 0);
    actions.screen.observation.window = "Search your orders";
    EXPECT_EQ(finish(), "finished");
    EXPECT_EQ(readInteger(answers.all.back(), "actions"), 2);
    EXPECT_EQ(readInteger(answers.all.back(), "questions"), 1);
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(finish(), "refused"); // There is none any more.

    start(task);
    EXPECT_EQ(coordinator.actionsThisTask() + coordinator.questionsThisTask(), 0);
    plan.update({{"done", {1}}});
    actions.screen = test::lookWith({});
    coordinator.questionEnded({.expected = orders}, ActionObserver::QuestionEnd::carriedOut, {.isVerified = true});
    EXPECT_EQ(finish(), "finished"); // The last step was seen to work.
    EXPECT_EQ(answers.all.size(), 9U);
}

} // namespace quorvell
