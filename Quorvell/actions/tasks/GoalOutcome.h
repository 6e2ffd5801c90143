// SPDX-License-Identifier: MIT
// What became of a goal that was handed over: what was done, what not, and what is needed now.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationHistory.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"
#include "QuorvellCore/live/tools/ToolResult.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct GoalOutcome {
    enum class Kind {
        finished, ///< The last step was seen to work.
        unproven, ///< A decider takes it for finished; nothing that was seen tells.
        needsYes, ///< A step waits for the user's yes; the task goes on by itself after it.
        needsUser, ///< A question, or something that only they may do.
        gaveUp,
        stopped, ///< By the user.
    };

    Kind kind = Kind::gaveUp;
    std::string reason{}; ///< Why it did not get further, in our own words: a sentence that the user may hear.
    std::string question{}; ///< For the user: the one that needs a yes word for word, or what only they may do.
    std::string advice{}; ///< Of a brake, for the model.
    std::string engineWords{}; ///< Of whoever decided, who has read the screen: untrusted.
    std::vector<AutomationHistory> steps{}; ///< What was tried, with the screen's own names: untrusted.
    int questions = 0; ///< That were put to the user on the way.
    std::optional<ScreenLook> screen{}; ///< As it is now, where it could be seen.

    /// How what comes from the screen is told to a model: marked as somebody else's words.
    struct Telling {
        std::function<std::string(const ScreenLook&)> screen;
        std::function<std::string(std::string)> fenced;
    };

    ToolStatus status() const;
    ToolResult result(const Telling& telling) const;
    /// The same as an event of the app, for what ends when no call waits for it.
    std::string event(const Telling& telling) const;

    bool operator==(const GoalOutcome&) const = default;

private:
    std::string message() const;
    std::string stepLines() const;
};

} // namespace quorvell
