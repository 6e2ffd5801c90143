// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/TurnTracker.h"

#include <algorithm>

namespace quorvell {

void TurnTracker::requested()
{
    isOpen = true;
    isAnswered = false;
    isDeclaredOver = false;
}

void TurnTracker::heard()
{
    if (!isOpen)
        requested();
}

void TurnTracker::backendStarted()
{
    isBackendWorking = true;
}

void TurnTracker::backendFinished()
{
    isBackendWorking = false;
}

void TurnTracker::answered(SessionTime until)
{
    isOpen = true;
    isAnswered = true;
    isDeclaredOver = false;
    outputUntil = std::max(outputUntil, until);
}

void TurnTracker::serviceFinished()
{
    if (!isAnswered)
        return;
    isBackendWorking = false;
    isDeclaredOver = true;
}

void TurnTracker::close()
{
    *this = {.isBackendWorking = isBackendWorking};
}

std::optional<SessionTime> TurnTracker::completeAt() const
{
    if (!isOpen || !isAnswered || isBackendWorking)
        return std::nullopt;
    return isDeclaredOver ? outputUntil : outputUntil + settleTime;
}

} // namespace quorvell
