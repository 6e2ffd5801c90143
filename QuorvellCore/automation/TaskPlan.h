// SPDX-License-Identifier: MIT
// The model's plan for a longer task: what it is for, its steps, and what was found out on the way.
#pragma once

#include "QuorvellCore/automation/TaskPlanChange.h"
#include "QuorvellCore/text/Json.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A value; its texts come from a model and are trimmed and cut.
struct TaskPlan {
    static constexpr std::size_t mostSteps = 20;
    static constexpr std::size_t mostFacts = 40; ///< Beyond it the oldest are forgotten.
    static constexpr std::size_t longestText = 500; ///< User-perceived characters of a goal, a step or a fact.

    struct Step {
        std::string text;
        bool done = false;
        bool operator==(const Step&) const = default;
    };

    std::string goal;
    std::vector<Step> steps;
    std::vector<std::string> facts; ///< Oldest first.
    std::string doneWhen; ///< What will be seen when the task is finished.

    /// From the arguments of start_task: goal, steps, done_when?. Nothing without a goal or without a step.
    static std::optional<TaskPlan> create(const Json& arguments);

    /// Takes over {"done", "facts"} of a plan_update, or also {"steps", "done_when"} of update_plan. New steps replace
    /// the list; those that stay keep their marks. Numbers count from 1 in the new list. What cannot be used is passed
    /// over and named in the change.
    TaskPlanChange update(const Json& changes);

    bool isFinished() const; ///< Every step is done.
    std::optional<std::size_t> nextStep() const; ///< Number of the first that is not done, from 1.

    /// {"goal", "steps": [{"number", "text", "done"}], "facts", "done_when"}.
    Json json() const;
    /// For the model, one line for the goal and each step.
    std::string summary() const;

    bool operator==(const TaskPlan&) const = default;

private:
    void replaceSteps(const Json& list, TaskPlanChange& change);
    void markDone(const Json& numbers, TaskPlanChange& change);
    void addFacts(const Json& list, TaskPlanChange& change);
};

} // namespace quorvell
