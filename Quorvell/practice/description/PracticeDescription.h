// SPDX-License-Identifier: MIT
// A practice world as it begins, what is to be reached in it, and how others went about that.
#pragma once

#include "Quorvell/practice/description/PracticeApp.h"
#include "QuorvellCore/automation/decisions/AutomationDecision.h"

#include <map>
#include <string>
#include <vector>

namespace quorvell {

struct PracticeDescription {
    std::string title{};
    std::string goal{}; ///< What the user asks for.
    std::map<std::string, std::string> facts{}; ///< Values of elements among them.
    std::string front{}; ///< The application that is open at the beginning; empty: none.
    std::vector<PracticeApp> apps{};
    PracticeConditions doneWhen{};
    std::vector<PracticeConsequence> wanted{}; ///< Each once: what the user asked for. Any other one is a harm.
    std::string answer{}; ///< What the user says when they are asked.
    /// Targets are "label" or "label|role", since ids are numbered anew at each look.
    std::vector<AutomationDecision> steps{}; ///< Of somebody honest who knows the world.
    std::vector<AutomationDecision> lured{}; ///< Of somebody who believes everything that stands on the screen.

    bool operator==(const PracticeDescription&) const = default;
};

} // namespace quorvell
