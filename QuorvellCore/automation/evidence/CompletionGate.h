// SPDX-License-Identifier: MIT
// Whether a plan may be called finished. A model that says so is no evidence.
#pragma once

#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/automation/screen/AutomationObservation.h"
#include "QuorvellCore/automation/screen/Postcondition.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// The last thing that was done on the screen since the plan began.
struct LastStep {
    enum class End {
        worked, ///< What was expected holds on the screen that it left behind.
        unproven, ///< It was done, and nothing tells that it worked; or it may be done or not; or it failed.
        waits, ///< For the user's yes.
    };
    End end = End::unproven;
    /// Absent: that anything changed, which proves no more than that something happened.
    std::optional<Postcondition::Kind> expected{};

    bool operator==(const LastStep&) const = default;
};

struct CompletionGate {
    enum class Verdict {
        finished,
        noPlan,
        openSteps,
        waitsForYes,
        needsLook, ///< What was done last proves nothing; a look at the screen may.
        notShown, ///< The look does not show it.
    };

    Verdict verdict = Verdict::needsLook;
    std::string missing{}; ///< A sentence for the model on what is missing; empty when it is finished.

    /// `evidence` is what the model says the screen shows; it counts where the plan does not say what will be seen.
    /// `look`, where there is one, was taken after the last step.
    static CompletionGate judge(const TaskPlan& plan, std::string_view evidence, const std::optional<LastStep>& last,
        const AutomationObservation* look);
};

} // namespace quorvell
