// SPDX-License-Identifier: MIT
// What is answered to a wish that is out of reach here.
#pragma once

#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/reach/ReachReply.h"
#include "Understanding/requests/RequestMood.h"

#include <string>

namespace quorvell {

struct ReachRules {
    /// What is not done here is said; for a deed at a time a reminder is offered.
    static RuleStep answer(const ReachReply& matter, const std::string& core, RequestMood mood,
        const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
