// SPDX-License-Identifier: MIT
// What the kinds of time named in a request hint at.
#pragma once

namespace quorvell {

struct TimeHints {
    bool hasMoment = false; ///< A time of day.
    bool hasDay = false;
    bool hasLength = false; ///< "half an hour"
    bool hasNewTime = false; ///< "to" and a time.
    bool hasDuty = false; ///< "to" and something to do, besides a time.

    bool operator==(const TimeHints&) const = default;
};

} // namespace quorvell
