// SPDX-License-Identifier: MIT
// Goals that ask for no task but for the last step to be taken back.
#pragma once

#include "Quorvell/actions/ActionResult.h"
#include "Quorvell/actions/tasks/GoalOutcome.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "QuorvellCore/live/tools/ToolResult.h"

#include <functional>
#include <string_view>

namespace quorvell {

struct UndoGoal {
    /// "undo that", "please take it back" and the like, and nothing beside it: "undo the merge in row 3" is a task.
    static bool isOne(std::string_view goal);

    /// What came of it, but for the screen.
    static ToolResult told(const ActionResult& result);
    /// Answers the call with it.
    static std::function<void(ActionResult)> teller(ToolReply reply, GoalOutcome::Telling telling);
};

} // namespace quorvell
