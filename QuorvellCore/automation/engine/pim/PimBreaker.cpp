// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PimBreaker.h"

namespace quorvell {

bool PimBreaker::allows(std::chrono::steady_clock::time_point now) const
{
    return !openUntil || now >= *openUntil;
}

void PimBreaker::record(bool answered, std::chrono::steady_clock::time_point now)
{
    if (answered) {
        *this = {};
    } else if (++failures >= failuresToOpen) {
        openUntil = now + pause;
        failures = 0;
    }
}

} // namespace quorvell
