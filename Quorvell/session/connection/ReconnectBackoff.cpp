// SPDX-License-Identifier: MIT
#include "Quorvell/session/connection/ReconnectBackoff.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvell {

void ReconnectBackoff::lost(SessionTime now, const SessionLimits& limits)
{
    const auto since = std::exchange(connectedAt, std::nullopt);
    if (since && now - *since >= limits.reconnectSteady)
        attempts = 0;
}

std::optional<SessionTime> ReconnectBackoff::next(double jitter, const SessionLimits& limits)
{
    if (attempts >= limits.reconnectAttempts)
        return std::nullopt;
    ++attempts;
    const auto shortest = static_cast<double>(limits.reconnectShortest.count());
    const auto longest = static_cast<double>(limits.reconnectLongest.count());
    const double ceiling = std::min(longest, std::ldexp(shortest, attempts)); // 1, 2, 4, 8, 8 s
    const double wait = shortest + std::clamp(jitter, 0.0, 1.0) * std::max(0.0, ceiling - shortest);
    return SessionTime(static_cast<SessionTime::rep>(wait));
}

} // namespace quorvell
