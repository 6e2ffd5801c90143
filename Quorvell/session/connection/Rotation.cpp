// SPDX-License-Identifier: MIT
#include "Quorvell/session/connection/Rotation.h"

#include <utility>

namespace quorvell {

void Rotation::want(std::string why, SessionTime now)
{
    if (rotationWanted)
        return;
    rotationWanted = true;
    cause = std::move(why);
    since = now;
}

void Rotation::noteAge(SessionTime connectionStart, SessionTime now, const SessionLimits& limits)
{
    if (now - connectionStart > limits.connectionAge)
        want("age", now);
}

void Rotation::noteContext(double ratio, SessionTime now, const SessionLimits& limits)
{
    if (ratio > limits.contextRatio)
        want("context", now);
}

bool Rotation::isDeferredTooLong(SessionTime now, const SessionLimits& limits)
{
    if (!rotationWanted || isDeferralKnown || now - since <= limits.rotationDeferral)
        return false;
    isDeferralKnown = true;
    return true;
}

} // namespace quorvell
