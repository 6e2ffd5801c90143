// SPDX-License-Identifier: MIT
// What an update did to a plan.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quorvell {

struct TaskPlanChange {
    std::vector<std::size_t> finished; ///< Numbers, from 1, of the steps that were not done before.
    std::vector<std::string> learned; ///< Facts that were not known before.
    bool replacedSteps = false;
    bool changedDoneWhen = false;
    std::vector<std::string> problems; ///< Sentences for the model about what was passed over.

    /// The task moved on: a step was finished or something was found out.
    bool isProgress() const { return !finished.empty() || !learned.empty(); }

    bool operator==(const TaskPlanChange&) const = default;
};

} // namespace quorvell
