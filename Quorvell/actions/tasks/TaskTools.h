// SPDX-License-Identifier: MIT
// The tools for whole goals, plans and pointing, in the registry.
#pragma once

#include "Quorvell/actions/tasks/GoalRun.h"
#include "Quorvell/actions/tasks/GuidePointer.h"
#include "Quorvell/actions/tasks/TaskCoordinator.h"
#include "Quorvell/session/tools/ToolRegistry.h"

namespace quorvell {

struct TaskTools {
    TaskCoordinator& coordinator;
    GuidePointer& pointer;
    GoalRun* goals = nullptr; ///< Null: nobody decides here, and do_task is not offered.
};

/// What carries them out is borrowed and must outlive the registry's last call.
void registerTaskTools(ToolRegistry& registry, TaskTools tools);

} // namespace quorvell
