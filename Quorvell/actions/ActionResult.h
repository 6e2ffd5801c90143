// SPDX-License-Identifier: MIT
// What came of one proposed action.
#pragma once

#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <optional>
#include <string>

namespace quorvell {

struct ActionResult {
    enum class Kind {
        done,
        failed, ///< It could not be done, or what was expected did not come about.
        refused, ///< By the guard, the loop guard, the mode or because another one runs: nothing was done.
        needsYes, ///< Nothing was done; `question` was put to the user.
        stopped, ///< The user stopped it on the way.
        unknown, ///< It may be done or not.
    };

    Kind kind = Kind::done;
    bool isVerified = false; ///< What was expected holds on the screen that it left behind.
    std::string words{}; ///< For the model.
    std::string question{}; ///< For the user, where a yes is needed.
    std::optional<ScreenLook> after{}; ///< The fresh screen, where there was one to see.

    bool operator==(const ActionResult&) const = default;
};

} // namespace quorvell
