// SPDX-License-Identifier: MIT
// How long to wait before each attempt to connect again.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/settings/SessionLimits.h"

#include <optional>

namespace quorvell {

/// Waits double and are spread at random, so that the clients of a service that fell over do not all come back at once.
struct ReconnectBackoff {
    int attempts = 0; ///< Since the last connection that held.
    std::optional<SessionTime> connectedAt; ///< Absent while there is no connection.

    void connected(SessionTime now) { connectedAt = now; }
    /// A connection that held long enough starts the count afresh.
    void lost(SessionTime now, const SessionLimits& limits);
    /// The wait before the next attempt; nothing when there were enough. `jitter` is 0 to 1.
    std::optional<SessionTime> next(double jitter, const SessionLimits& limits);

    bool operator==(const ReconnectBackoff&) const = default;
};

} // namespace quorvell
