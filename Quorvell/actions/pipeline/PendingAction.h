// SPDX-License-Identifier: MIT
// An action that waits for the user's yes to its question.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "QuorvellCore/automation/proposals/ProposedAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace quorvell {

struct PendingAction {
    static constexpr std::chrono::minutes longestWait{5}; ///< As long as a yes to its question counts.

    enum class Purpose {
        forward,
        undo, ///< It takes back what was done last.
    };

    std::uint64_t number = 0; ///< Of the question, from 1.
    ProposedAction action{};
    std::string question{}; ///< Put to the user word for word.
    std::shared_ptr<const ScreenLook> look{}; ///< That it was judged on; never null while it waits.
    SessionTime askedAt{};
    Purpose purpose = Purpose::forward;
};

} // namespace quorvell
