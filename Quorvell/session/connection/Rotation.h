// SPDX-License-Identifier: MIT
// Whether the live connection is to be replaced by a fresh one, and why.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/settings/SessionLimits.h"

#include <chrono>
#include <string>

namespace quorvell {

struct Rotation {
    bool rotationWanted = false;
    std::string cause; ///< For the event log: "go_away", "age" or "context".
    SessionTime since{}; ///< When it was first wanted.
    bool isDeferralKnown = false; ///< Said to have waited too long.

    /// The first cause stays.
    void want(std::string why, SessionTime now);
    void noteAge(SessionTime connectionStart, SessionTime now, const SessionLimits& limits);
    void noteContext(double ratio, SessionTime now, const SessionLimits& limits);
    /// True once, when the quiet moment has been waited for too long.
    bool isDeferredTooLong(SessionTime now, const SessionLimits& limits);

    bool operator==(const Rotation&) const = default;
};

} // namespace quorvell
