// SPDX-License-Identifier: MIT
#include "Quorvell/session/quiet/IdleRules.h"

namespace quorvell {

IdleRules::Verdict IdleRules::verdict(const SessionLimits& limits) const
{
    if (doze == Doze::awake && mayRest && isListening && !isHighlighted && quietFor > limits.restAfter)
        return Verdict::rest;
    return quietFor > allowedSilence(limits) ? Verdict::stop : Verdict::goOn;
}

std::chrono::milliseconds IdleRules::allowedSilence(const SessionLimits& limits) const
{
    if (!isListening)
        return limits.quietNotListening;
    if (doze != Doze::awake)
        return limits.quietResting;
    return isHighlighted ? limits.quietHighlighted : limits.quietListening;
}

std::string_view IdleRules::reason() const
{
    if (doze != Doze::awake)
        return "quiet for a while, resting";
    return isHighlighted ? "quiet for a while with something highlighted" : "quiet for a while";
}

} // namespace quorvell
