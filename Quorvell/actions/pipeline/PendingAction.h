// SPDX-License-Identifier: MIT
// An action that waits for the user's yes to its question.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "QuorvellCore/automation/proposals/ProposedAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <chrono>
#include <string>

namespace quorvell {

struct PendingAction {
    static constexpr std::chrono::minutes longestWait{5}; ///< As long as a yes to its question counts.

    ProposedAction action{};
    std::string question{}; ///< Put to the user word for word.
    ScreenLook look{}; ///< That it was chosen on, without its picture.
    SessionTime askedAt{};
};

} // namespace quorvell
