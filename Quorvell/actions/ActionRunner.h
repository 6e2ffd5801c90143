// SPDX-License-Identifier: MIT
// The one way to the screen for whoever wants something done there: judged, braked, run, looked at again, recorded.
#pragma once

#include "Quorvell/actions/ActionResult.h"
#include "Quorvell/surface/Screen.h"
#include "QuorvellCore/automation/proposals/ProposedAction.h"

#include <functional>

namespace quorvell {

/// Main thread. Every answer comes exactly once.
class ActionRunner {
public:
    virtual ~ActionRunner() = default;

    virtual void run(ProposedAction action, std::function<void(ActionResult)> answer) = 0;
    /// What is seen counts from here on as the latest look.
    virtual void look(const LookWish& wish, Screen::Answer<ScreenLook> answer) = 0;
};

} // namespace quorvell
