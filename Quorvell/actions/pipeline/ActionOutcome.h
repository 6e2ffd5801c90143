// SPDX-License-Identifier: MIT
// What a model is told of an action that reached the screen: no more than is known.
#pragma once

#include "Quorvell/actions/ActionResult.h"
#include "Quorvell/surface/Screen.h"
#include "QuorvellCore/automation/screen/Postcondition.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <optional>

namespace quorvell {

struct ActionOutcome {
    /// Where they stopped it, by what was done by then. Nothing was, where it failed.
    static ActionResult stoppedAt(ScreenOutcome::Kind reached);
    /// By the screens before and after, of which the latter could not be seen where it is null.
    static ActionResult of(const ScreenOutcome& outcome, const std::optional<Postcondition>& expected,
        const ScreenLook& before, const ScreenLook* after, const ScreenProblem* blind);
};

} // namespace quorvell
