// SPDX-License-Identifier: MIT
// What is done with one of the things of the list that was told last: "cancel the second one".
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>

namespace quorvell {

struct ListedRules {
    /// Nothing for a request that does not point into the list.
    static std::optional<RuleStep> answer(
        const Request& request, const RequestMemory& memory, const RuleSurroundings& around);
};

} // namespace quorvell
