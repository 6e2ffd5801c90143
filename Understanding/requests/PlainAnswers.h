// SPDX-License-Identifier: MIT
// Answers what needs no tool and can be said at any time: greetings, thanks, praise, doubt, "never mind", "start
// again".
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct PlainAnswers {
    /// `opened` still has the closing words, which may be all that was said: "thank you". Small talk leaves an open
    /// question open.
    static std::optional<RuleStep> answer(
        const std::string& core, const std::string& opened, RequestMemory memory, const RuleSurroundings& around);
    /// Nothing that was asked about is done.
    static RuleStep drop(RequestMemory memory);
};

} // namespace quorvell
