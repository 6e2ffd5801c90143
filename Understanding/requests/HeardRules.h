// SPDX-License-Identifier: MIT
// The rules for words that were heard rather than typed: where the ears have a doubt that matters, it is settled before
// anything changes. Pure.
//
// Every reading goes through the rules. Where they all come to the same there is no doubt, and a question that only
// looks something up is answered at once: the answer shows what was understood.
#pragma once

#include "Understanding/dialogue/HeardDoubts.h"
#include "Understanding/dialogue/QuestionKind.h"

#include <string_view>

namespace quorvell {

struct HeardRules {
    /// As RequestRules::answerWords.
    static RuleStep answer(
        std::string_view words, const HeardDoubts& doubts, const RequestMemory& memory, const RuleSurroundings& around);
    /// Words that are certain, and may still answer a question about others that were heard.
    static RuleStep answerTyped(std::string_view words, const RequestMemory& memory, const RuleSurroundings& around);

    /// "Did you say 8:15, or 8:50?"
    static const QuestionKind whichReading;
};

} // namespace quorvell
