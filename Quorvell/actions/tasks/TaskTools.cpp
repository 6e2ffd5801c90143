// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/TaskTools.h"

#include <utility>

namespace quorvell {

void registerTaskTools(ToolRegistry& registry, TaskTools tools)
{
    const auto own = [&registry](const char* name, auto& owner, auto method) {
        registry.add(name, [&owner, method](const LiveFunctionCall& call, ToolReply reply) {
            (owner.*method)(call, std::move(reply));
        });
    };
    own("start_task", tools.coordinator, &TaskCoordinator::startTask);
    own("update_plan", tools.coordinator, &TaskCoordinator::updatePlan);
    own("task_finished", tools.coordinator, &TaskCoordinator::taskFinished);
    own("point_at", tools.pointer, &GuidePointer::pointAt);
    own("point_at_spot", tools.pointer, &GuidePointer::pointAtSpot);
    registry.add("clear_pointer", [&pointer = tools.pointer](const LiveFunctionCall&, ToolReply reply) {
        pointer.clearPointer(std::move(reply));
    });
    if (tools.goals)
        own("do_task", *tools.goals, &GoalRun::start);
}

} // namespace quorvell
