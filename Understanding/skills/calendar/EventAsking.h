// SPDX-License-Identifier: MIT
// Questions about events that are put in another way than "what is on" and "when is": clashes, what comes back, what
// there is with somebody. The patterns read the words as CalendarWords gives them.
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/dialogue/memory/EventSearch.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventAsking {
    /// `plain` is `core` in the form of CalendarWords.
    static std::optional<Request> read(
        const std::string& plain, const std::string& core, const RuleSurroundings& around);
    /// What a question that no note answers may look for in the calendar: "when is yoga", "do I have yoga".
    static std::optional<EventSearch> ofUnknown(const std::string& question, const RuleSurroundings& around);
};

} // namespace quorvell
