// SPDX-License-Identifier: MIT
// How what was done on the screen is taken back.
#pragma once

#include "QuorvellCore/automation/screen/Postcondition.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <optional>
#include <string>
#include <variant>

namespace quorvell {

struct ActionUndo {
    ScreenAction action{}; ///< For the look after the action.
    std::string effect{}; ///< What it brings about and what it does not, for the model.
    std::optional<Postcondition>
        expected{}; ///< How to tell that it worked; absent where the elements show nothing of it.

    bool operator==(const ActionUndo&) const = default;
};

/// For an action that was done between these two looks; else a sentence that says why it cannot be undone. Only what is
/// sure to lead back counts: what a press set off is not known.
std::variant<ActionUndo, std::string> undoOf(
    const ScreenAction& action, const ScreenLook& before, const ScreenLook& after);

} // namespace quorvell
