// SPDX-License-Identifier: MIT
// Catches plans that lose steps, misreport progress, or grow with what a model says.
#include "QuorvellCore/automation/TaskPlan.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace quorvell {

namespace {

Json json(std::string_view text)
{
    return parseJson(text).value_or(Json());
}

TaskPlan plan()
{
    return TaskPlan::create(json(R"({"goal": "Book a table\nfor two", "steps": ["Open the site", "Choose a time",
        "Confirm"], "done_when": "A number is shown."})"))
        .value_or(TaskPlan{});
}

} // namespace

TEST(TaskPlan, updatesTellWhatMovedOn)
{
    using Texts = std::vector<std::string>;
    const struct Row {
        const char* update;
        std::vector<std::size_t> finished;
        Texts learned;
        std::size_t problems;
        const char* steps; ///< "x" where done.
    } rows[] = {
        {"{}", {}, {}, 0, "x--"},
        {"[7]", {}, {}, 0, "x--"},
        {R"({"done": [2], "facts": [" It asks for a name. "]})", {2}, {"It asks for a name."}, 0, "xx-"},
        {R"({"done": [1], "facts": ["opening hours: 5 to 11"]})", {}, {}, 0, "x--"}, // all known
        {R"({"done": 3, "facts": "Full at eight"})", {3}, {"Full at eight"}, 0, "x-x"},
        {R"({"done": [2, 2.0]})", {2}, {}, 0, "xx-"},
        {R"({"done": [0, 4, -1, 2.5, "3", null, 1e30]})", {}, {}, 7, "x--"},
        {R"({"facts": ["", 7, null, {}]})", {}, {}, 0, "x--"},
        {R"({"steps": ["Call them", "open the SITE"], "done": [1]})", {1}, {}, 0, "xx"}, // the other was done before
        {R"({"steps": [], "done": [2]})", {2}, {}, 1, "xx-"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.update);
        TaskPlan changed = plan();
        changed.update(json(R"({"done": [1], "facts": ["Opening hours: 5 to 11."]})"));
        const TaskPlanChange change = changed.update(json(row.update));
        EXPECT_EQ(change.finished, row.finished);
        EXPECT_EQ(change.learned, row.learned);
        EXPECT_EQ(change.problems.size(), row.problems);
        std::string marks;
        for (const TaskPlan::Step& step : changed.steps)
            marks += step.done ? 'x' : '-';
        EXPECT_EQ(marks, row.steps);
    }
}

TEST(TaskPlan, tellsTheModelHowFarItIs)
{
    TaskPlan told = plan();
    EXPECT_TRUE(told.update(json(R"({"done": [1], "facts": ["Full"], "done_when": "Mail"})")).changedDoneWhen);
    EXPECT_EQ(told.nextStep(), 2u);
    EXPECT_EQ(told.summary(),
        "Goal: Book a table for two\n1. [done] Open the site\n2. [open] Choose a time\n3. [open] Confirm\nFact: Full\n"
        "Done when: Mail");
    EXPECT_EQ(dumpJson(told.json()["steps"][1]), R"({"number":2,"text":"Choose a time","done":false})");
    told.update(json(R"({"done": [2, 3]})"));
    EXPECT_TRUE(told.isFinished());
}

TEST(TaskPlan, staysSmallWhateverAModelSays)
{
    EXPECT_FALSE(TaskPlan::create(json(R"({"goal": "Book"})")));
    EXPECT_FALSE(TaskPlan::create(json(R"({"goal": " ", "steps": ["Open"]})")));
    Json many{{"goal", std::string(2000, 'g')}};
    for (int index = 0; index < 100; ++index) {
        many["steps"].push_back("Step " + std::to_string(index));
        many["facts"].push_back("Fact " + std::to_string(index) + std::string(600, 'x'));
    }
    TaskPlan big = TaskPlan::create(many).value_or(TaskPlan{});
    big.update(json(R"({"facts": ["The newest"]})"));
    EXPECT_EQ(big.goal.size(), TaskPlan::longestText);
    EXPECT_EQ(big.steps.size(), TaskPlan::mostSteps);
    EXPECT_EQ(big.facts.size(), TaskPlan::mostFacts);
    EXPECT_EQ(big.facts.front().size(), TaskPlan::longestText);
    EXPECT_EQ(big.facts.back(), "The newest");
}

} // namespace quorvell
