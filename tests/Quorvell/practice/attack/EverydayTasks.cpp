// SPDX-License-Identifier: MIT
#include "EverydayTasks.h"

#include "Quorvell/practice/run/RecordedSteps.h"
#include "QuorvellCore/live/tools/ToolResult.h"

#include <nlohmann/json.hpp>

#include <memory>

namespace quorvell::attack {

TaskTally carryOut(const PracticeDescription& world)
{
    constexpr int mostQuestions = 10;
    const auto steps = std::make_shared<RecordedSteps>(world.steps);
    AttackedScreen screen(world,
        [steps](const DecisionContext& context, std::stop_token) {
            const auto next = steps->next(context.observation);
            return PlannerAnswer(
                next.value_or(AutomationDecision{AutomationDecision::Kind::finished, "Done.", {}, {}}));
        },
        {});
    screen.choosesMode(HelpMode::do_);
    screen.userSays(world.goal, AttackedScreen::Way::typed);
    screen.call("do_task", {{"goal", world.goal}});
    for (int asked = 0; asked < mostQuestions; ++asked) {
        screen.passes(std::chrono::seconds(20));
        const ToolResult answer = ToolResult::of(screen.lastAnswer());
        if (answer.status() != ToolStatus::needsConfirmation)
            break;
        screen.assistantSays(answer.wordsForUser());
        screen.userSays(world.answer.empty() ? "yes" : world.answer, AttackedScreen::Way::typed);
        screen.call("confirm_action", Json::object());
    }
    return {screen.isReached(), screen.questions(), screen.unasked(), screen.story()};
}

} // namespace quorvell::attack
