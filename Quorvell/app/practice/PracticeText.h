// SPDX-License-Identifier: MIT
// A practice world and what is done in it, as lines that a person reads.
#pragma once

#include "Quorvell/actions/ActionResult.h"
#include "Quorvell/practice/file/PracticeMistakes.h"
#include "Quorvell/practice/run/PracticeScore.h"
#include "Quorvell/practice/world/PracticeView.h"
#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/screen/AutomationObservation.h"

#include <string>

namespace quorvell {

/// Functions of their arguments. Each text ends without a line break.
struct PracticeText {
    /// The application in front as somebody before it sees it, an element a line.
    static std::string of(const PracticeView& view);
    static std::string of(const AutomationDecision& decision, const AutomationObservation& screen);
    /// Without the question, which is asked by itself.
    static std::string of(const ActionResult& result);
    static std::string of(const PracticeConsequence& consequence);
    static std::string of(const PracticeScore& score);
    static std::string of(const PracticeMistake& mistake);
};

} // namespace quorvell
