// SPDX-License-Identifier: MIT
// Questions for one reminder out of all: the next one, or when the one about the cake comes.
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/dialogue/memory/FoundThing.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct ReminderQuery {
    static std::optional<Request> read(const std::string& core);
    /// With all reminders that there are, where the wish that is kept in mind asks for one of them.
    static RuleStep tell(const std::vector<FoundThing>& listed, RequestMemory memory, const RuleSurroundings& around);
};

} // namespace quorvell
