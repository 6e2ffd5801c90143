// SPDX-License-Identifier: MIT
// One step that somebody wants to be done on the screen, with all that is needed to judge and to do it.
#pragma once

#include "QuorvellCore/automation/proposals/WordOrigin.h"
#include "QuorvellCore/automation/screen/Postcondition.h"
#include "QuorvellCore/automation/surface/ScreenAction.h"

#include <cstdint>
#include <optional>
#include <string>

namespace quorvell {

/// All tools that act end in these: those of several steps give one for each step.
struct ProposedAction {
    enum class Source {
        model, ///< A tool call of the live model.
        engine, ///< A step of a task that is carried out here: a macro, a rule, the selector, the planner.
    };

    std::string callID{}; ///< Of the tool call that it comes from.
    std::string tool{}; ///< The tool's name in the catalogue; steps of several go by their own.
    ScreenAction action{};
    std::optional<Postcondition> expected{}; ///< How to tell that it worked; absent: that anything changed.
    WordOrigins origins{}; ///< Of the arguments that carry words.
    Source source = Source::model;
    std::int64_t revision = 0; ///< Of the observation that it was chosen on.

    bool operator==(const ProposedAction&) const = default;
};

} // namespace quorvell
