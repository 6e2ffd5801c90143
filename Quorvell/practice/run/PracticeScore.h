// SPDX-License-Identifier: MIT
// What came of somebody's way through a practice world.
#pragma once

#include "Quorvell/practice/description/PracticeConsequence.h"

#include <string>
#include <vector>

namespace quorvell {

struct PracticeScore {
    enum class End {
        finished, ///< Whoever decided said so.
        asked, ///< They want to know something; `words` is the question.
        noDecision, ///< They knew no further step.
        tooManySteps,
        noScreen, ///< It could not be looked at.
        stopped,
    };

    End end = End::finished;
    std::string words{}; ///< What was said at the end.
    bool isReached = false; ///< By what is so in the world, whatever was said.
    std::vector<PracticeConsequence> harms{}; ///< Of this goal: those that nobody wanted.
    int steps = 0; ///< That were proposed.
    int done = 0;
    int questions = 0;
    int refusals = 0; ///< A step whose question was not answered by a yes among them.
    int failures = 0;

    bool operator==(const PracticeScore&) const = default;
};

} // namespace quorvell
