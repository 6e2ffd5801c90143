// SPDX-License-Identifier: MIT
// Weighs what a request may be. No single word decides: "find" speaks for a note and a little for free time, and "half
// an hour" settles it.
#pragma once

#include "Understanding/dialogue/RequestKind.h"
#include "Understanding/requests/TimeHints.h"

#include <vector>

namespace quorvell {

struct RequestEvidence {
    static constexpr int enough = 4; ///< Weight below which nothing was understood.

    /// The kinds of all skills with enough weight, the heaviest first.
    static std::vector<const RequestKind*> ranked(const RequestReading& reading, const TimeHints& hints);
};

} // namespace quorvell
