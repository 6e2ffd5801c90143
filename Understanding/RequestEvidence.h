// SPDX-License-Identifier: MIT
// Weighs what kind of request the words make.
#pragma once

#include "Understanding/RequestKind.h"
#include "Understanding/RequestReading.h"

#include <vector>

namespace quorvell {

/// What the kinds of time named in a request hint at.
struct TimeHints {
    bool hasMoment = false; ///< A time of day.
    bool hasDay = false;
    bool hasLength = false; ///< "half an hour"
    bool hasNewTime = false; ///< "to" and a time.
    bool hasDuty = false; ///< "to" and something to do, besides a time.

    bool operator==(const TimeHints&) const = default;
};

/// Weighs what a request may be. No single word decides: "find" speaks for a note and a little for free time, and "half
/// an hour" settles it.
struct RequestEvidence {
    static constexpr int enough = 4; ///< Weight below which nothing was understood.

    /// The kinds with enough weight, the heaviest first.
    static std::vector<RequestKind> ranked(const RequestReading& reading, const TimeHints& hints);
};

} // namespace quorvell
