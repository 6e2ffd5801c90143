// SPDX-License-Identifier: MIT
// What the conversation keeps in mind of the calendar: "it", what was told, and what is left to tell.
#pragma once

#include "Understanding/dialogue/RuleStep.h"

#include <vector>

namespace quorvell {

struct AgendaTopic {
    /// What "the second one" points into, and what is left for "read me the rest".
    static void keepTold(std::vector<FoundThing> listed, RequestMemory& memory);
    /// "Read me the rest."
    static RuleStep tellRest(RequestMemory memory);
    /// "It" is that event from now on.
    static void talkAbout(const FoundThing& event, RequestMemory& memory);
};

} // namespace quorvell
