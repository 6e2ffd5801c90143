// SPDX-License-Identifier: MIT
// Catches a goal that is called done unseen, that goes on against the user's will, that never ends, and a call that is
// answered twice or never.
#include "Quorvell/actions/tasks/GoalRun.h"

#include "Quorvell/actions/tasks/GoalSteps.h"
#include "Quorvell/actions/tasks/UndoGoal.h"
#include "TaskParts.h"

#include <gtest/gtest.h>

namespace quorvell {

using namespace std::chrono_literals;
using test::lookWith;
using Result = ActionResult::Kind;

namespace {

StepAnswer pressed(
    const char* id, std::optional<Postcondition> expected = Postcondition{Postcondition::Kind::labelAppeared, "Orders"})
{
    return RoutedDecision{{AutomationDecision::Kind::action, "", AutomationAction{.target = id}, std::move(expected)}};
}

StepAnswer said(AutomationDecision::Kind kind, const char* message = "")
{
    return RoutedDecision{{kind, message, {}, {}}};
}

const StepAnswer isFinished = said(AutomationDecision::Kind::finished, "The orders are open.");

class GoalRunTest : public testing::Test, public test::TaskParts {
protected:
    void begin(const char* goal = "Open my orders")
    {
        goals.start({"c1", "do_task", {{"goal", goal}}}, answers.reply());
    }
    void run(std::deque<StepAnswer> decisions)
    {
        deciding.answers = std::move(decisions);
        begin();
        scheduler.advance(1s);
    }
    void askForYes()
    {
        actions.results.push_back({.kind = Result::needsYes, .question = "Shall I press \"Orders\" for you?"});
        run({pressed("e1")});
    }
    /// What the pipeline tells of the question once it is settled.
    void settle(ActionObserver::QuestionEnd end, ActionResult result = {})
    {
        goals.questionEnded(actions.actions.back(), end, result);
    }
    std::string status() const { return answers.last("status"); }

    HelpMode mode = HelpMode::do_;
    std::vector<std::size_t> learnt; ///< The length of each way.
    ActionResult undone{.words = "The field holds what it held before."};
    GoalRun goals{{scheduler, log, actions, gate, deciding, [] { return StepDecider(); }, [this] { return mode; }, tell,
        telling, [this](const std::string&, const std::vector<MacroStep>& way) { learnt.push_back(way.size()); },
        [this](const std::string&, const std::function<void(ActionResult)>& answer) { answer(undone); }}};
};

} // namespace

TEST_F(GoalRunTest, tellsHowItEnded)
{
    const auto done = [](bool isVerified) {
        return ActionResult{.isVerified = isVerified, .after = lookWith({"Orders"})};
    };
    const StepAnswer scroll = RoutedDecision{{AutomationDecision::Kind::action, "",
        AutomationAction{AutomationAction::Tool::scroll, {}, {}, {}, {}, {}, {}, "down"}, {}}};
    struct Row {
        const char* name;
        std::deque<StepAnswer> decisions;
        std::deque<ActionResult> results;
        const char* status;
        std::size_t steps;
        const char* words; ///< Among what is told.
    };
    const Row rows[] = {
        {"a step that works", {pressed("e1"), isFinished}, {}, "finished", 1, "It's done."},
        {"a step that nobody saw to work", {pressed("e1"), isFinished}, {done(false)}, "gave_up", 1, "Please check"},
        {"nothing to do", {isFinished}, {}, "gave_up", 0, "Nothing had to be done on the screen."},
        {"tried again", {pressed("e1"), pressed("e1"), isFinished}, {done(false), done(true)}, "finished", 2, "done"},
        {"three that do not work", {pressed("e1"), scroll, pressed("e2"), isFinished},
            {done(false), {.kind = Result::failed}, done(false)}, "gave_up", 3, "What I tried didn't work."},
        {"three that are not there", {pressed("e9"), pressed("e9"), pressed("")}, {}, "gave_up", 3, "didn't work"},
        {"what only they may do", {pressed("e1")},
            {{.kind = Result::refused, .words = "Refused.", .question = "You should press it yourself."}}, "needs_user",
            0, "You should press it yourself."},
        {"a brake", {pressed("e1")}, {{.kind = Result::refused, .words = "Look at the screen."}}, "gave_up", 0,
            "Look at the screen."},
        {"a question", {said(AutomationDecision::Kind::clarify, "Which of the\ntwo?")}, {}, "needs_user", 0,
            "Which of the two?"},
        {"an application that does not answer", {pressed("e1")}, {{.kind = Result::unknown}}, "gave_up", 1,
            "may be done or not"},
        {"stopped on the way", {pressed("e1")}, {{.kind = Result::stopped}}, "stopped", 0, "Stopped before anything"},
        {"a decider that fails", {DecisionError{DecisionError::Kind::timedOut, 0, "The planner did not answer."}}, {},
            "gave_up", 0, "The planner did not answer."},
        {"an image twice", {said(AutomationDecision::Kind::vision), said(AutomationDecision::Kind::vision)}, {},
            "gave_up", 0, "can't tell from what is on the screen"},
        {"an image once", {said(AutomationDecision::Kind::vision), pressed("e1"), isFinished}, {}, "finished", 1,
            "done"},
        {"a yes", {pressed("e1")}, {{.kind = Result::needsYes, .question = "Shall I?"}}, "needs_confirmation", 0,
            "Shall I?"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        answers.all.clear();
        actions.results = row.results;
        run(row.decisions);
        ASSERT_EQ(answers.all.size(), 1U);
        const Json& answer = answers.all.front();
        EXPECT_EQ(status(), row.status);
        EXPECT_EQ(memberOf(answer, "steps")->size(), row.steps);
        EXPECT_NE(dumpJson(answer).find(row.words), std::string::npos) << dumpJson(answer);
        EXPECT_EQ(answers.last("screen"), "screen Example Shop");
        EXPECT_FALSE(gate.current());
        goals.stop();
        events.clear();
    }
    EXPECT_EQ(learnt, (std::vector<std::size_t>{1, 1})); // Every step of it was seen to work.
}

TEST_F(GoalRunTest, showsEachDeciderWhatWasDoneAndTheImageOnlyWhereItAskedForOne)
{
    run({said(AutomationDecision::Kind::vision), pressed("e1"), isFinished});
    ASSERT_EQ(deciding.contexts.size(), 3U);
    EXPECT_FALSE(deciding.contexts[0].image);
    EXPECT_TRUE(deciding.contexts[1].image);
    EXPECT_FALSE(deciding.contexts[2].image);
    ASSERT_EQ(deciding.contexts[2].history.size(), 1U);
    EXPECT_TRUE(deciding.contexts[2].history[0].verified);
    EXPECT_EQ(actions.actions[0].callID, "c1");
    EXPECT_EQ(actions.actions[0].source, ProposedAction::Source::engine);
    // What the screen and those who read it say is marked as theirs.
    EXPECT_NE(answers.last("details").find("<<1. click Orders: seen to work"), std::string::npos);
    EXPECT_EQ(
        dumpJson(answers.all[0]).find("The orders are open."), dumpJson(answers.all[0]).rfind("The orders are open."));
}

TEST_F(GoalRunTest, isNotBegun)
{
    mode = HelpMode::guide;
    begin();
    EXPECT_EQ(status(), "refused");
    mode = HelpMode::do_;
    for (const std::string& goal : {std::string(" "), std::string(4'001, 'a')})
        goals.start({"c1", "do_task", {{"goal", goal}}}, answers.reply());
    const auto ticket = gate.begin("other");
    begin();
    gate.finish(*ticket);
    begin();
    begin(); // While one runs.
    ASSERT_EQ(answers.all.size(), 5U);
    for (const Json& answer : answers.all)
        EXPECT_TRUE(readString(answer, "error") || readString(answer, "status") == "refused") << dumpJson(answer);
    EXPECT_TRUE(goals.isRunning());
    EXPECT_TRUE(actions.actions.empty());
}

TEST_F(GoalRunTest, endsInTime)
{
    run({});
    EXPECT_TRUE(goals.isRunning());
    scheduler.advance(4min);
    EXPECT_TRUE(answers.all.empty());
    scheduler.advance(1min);
    EXPECT_EQ(status(), "gave_up");
    EXPECT_EQ(deciding.ended, 1);

    for (int step = 0; step < 100; ++step)
        deciding.answers.push_back(pressed("e1"));
    begin();
    scheduler.advance(1s);
    EXPECT_EQ(actions.actions.size(), static_cast<std::size_t>(GoalSteps::most));
    EXPECT_NE(answers.last("message").find("more steps than I take at once"), std::string::npos);
    EXPECT_EQ(answers.all.size(), 2U);
}

TEST_F(GoalRunTest, tellsNowAndThenThatItGoesOn)
{
    actions.isHeld = true;
    run({pressed("e1"), pressed("e1"), pressed("e1")});
    for (int step = 0; step < 2; ++step) {
        scheduler.advance(15s);
        std::exchange(actions.held, {}).front()({.isVerified = true, .after = actions.screen});
        scheduler.settle();
    }
    EXPECT_EQ(events.size(), 1U);
    EXPECT_EQ(events[0].find("Orders"), std::string::npos); // Nothing of the screen in the app's own words.
}

TEST_F(GoalRunTest, stopsAtOnce)
{
    // While it is decided, however the stop comes.
    run({});
    goals.stop();
    EXPECT_EQ(status(), "stopped");
    run({});
    gate.cancel();
    scheduler.advance(1s);
    EXPECT_EQ(answers.all.size(), 2U);
    EXPECT_EQ(deciding.ended, 2);

    // While something is done: only that knows how far it got.
    actions.isHeld = true;
    run({pressed("e1")});
    goals.stop();
    goals.stop();
    EXPECT_EQ(answers.all.size(), 2U);
    EXPECT_TRUE(gate.current()->cancellation->isCancelled());
    actions.held.front()({.isVerified = true, .after = lookWith({"Orders"})});
    EXPECT_EQ(status(), "stopped");
    EXPECT_NE(answers.last("message").find("after 1 step"), std::string::npos);
    EXPECT_EQ(actions.actions.size(), 1U);
    EXPECT_TRUE(learnt.empty());
}

TEST_F(GoalRunTest, goesOnByItselfAfterTheYes)
{
    askForYes();
    EXPECT_EQ(answers.last("question"), "Shall I press \"Orders\" for you?");
    EXPECT_TRUE(goals.isWaiting());
    EXPECT_FALSE(gate.current()); // Nothing is busy meanwhile.
    scheduler.advance(6min); // Nor does its time run.

    deciding.answers = {isFinished};
    settle(ActionObserver::QuestionEnd::carriedOut, {.isVerified = true, .after = lookWith({"Orders"})});
    test::Answers confirmation;
    ToolReply reply = confirmation.reply();
    EXPECT_TRUE(goals.carryOn(reply));
    scheduler.advance(1s);
    EXPECT_EQ(confirmation.last("status"), "finished");
    EXPECT_EQ(readInteger(confirmation.all[0], "questions"), 1);
    EXPECT_EQ(answers.all.size(), 1U);
    EXPECT_TRUE(events.empty());
    EXPECT_FALSE(goals.carryOn(reply));
}

TEST_F(GoalRunTest, tellsOfItsEndWhereNoCallWaits)
{
    askForYes();
    deciding.answers = {pressed("e2"), isFinished};
    actions.results.push_back({.kind = Result::needsYes, .question = "And that?"});
    settle(ActionObserver::QuestionEnd::carriedOut, {.isVerified = true, .after = lookWith({"Orders", "Pay"})});
    scheduler.advance(1s);
    ASSERT_EQ(events.size(), 1U);
    EXPECT_NE(events[0].find("And that?"), std::string::npos);
    settle(ActionObserver::QuestionEnd::carriedOut, {.isVerified = true, .after = lookWith({"Orders"})});
    scheduler.advance(1s);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_TRUE(events[1].starts_with("[Quorvell app event] The task that do_task began is over. It's done."));
}

TEST_F(GoalRunTest, doesNothingMoreWithoutTheYes)
{
    struct Row {
        const char* name;
        std::function<void()> happens;
        bool goesOn;
    };
    using End = ActionObserver::QuestionEnd;
    const Row rows[] = {
        {"they say no", [this] { settle(End::refused); }, false},
        {"the question is dropped", [this] { settle(End::dropped); }, false},
        {"another question of the same step",
            [this] {
                settle(End::dropped);
                goals.actionEnded(actions.actions.back(), {.kind = Result::needsYes, .question = "Really?"});
            },
            true},
        {"somebody else's question", [this] { goals.questionEnded({.callID = "c2"}, End::refused, {}); }, true},
        {"somebody else's yes",
            [this] { goals.questionEnded({.callID = "c2"}, End::carriedOut, {.isVerified = true}); }, true},
        {"stop", [this] { goals.stop(); }, false},
        {"the screen is taken when the yes comes",
            [this] {
                settle(End::carriedOut, {.isVerified = true});
                EXPECT_TRUE(gate.begin("c9"));
            },
            false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        askForYes();
        const std::size_t before = actions.actions.size();
        deciding.answers = {pressed("e1"), pressed("e1")};
        row.happens();
        scheduler.advance(1s);
        EXPECT_EQ(goals.isWaiting(), row.goesOn);
        EXPECT_EQ(actions.actions.size(), before);
        EXPECT_EQ(events.size(), row.goesOn ? 0U : 1U);
        goals.stop();
        gate.cancel();
        events.clear();
    }
}

TEST_F(GoalRunTest, takesBackWhatWasDoneLast)
{
    for (const char* goal : {"undo that", "Undo.", "Please take it back", "can you undo the last step please"}) {
        begin(goal);
        EXPECT_EQ(status(), "undone") << goal;
    }
    for (const char* goal : {"undo the merge in row 3", "take back the car", "don't undo that", ""})
        EXPECT_FALSE(UndoGoal::isOne(goal)) << goal;
    undone = {.kind = Result::needsYes, .question = "Shall I?"};
    begin("undo that");
    EXPECT_EQ(status(), "needs_confirmation");
    undone = {.kind = Result::failed, .words = "What a press set off can't be undone."};
    begin("undo that");
    EXPECT_EQ(answers.last("error"), undone.words);
    EXPECT_FALSE(goals.isRunning());
}

} // namespace quorvell
