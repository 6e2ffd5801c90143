// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/screen/AutomationObservation.h"

#include "QuorvellCore/safety/SafetyGuard.h"

namespace quorvell {

const AutomationCandidate* AutomationObservation::usableTarget(std::string_view id) const
{
    const AutomationCandidate* target = nullptr;
    for (const AutomationCandidate& candidate : candidates) {
        if (candidate.id != id)
            continue;
        if (target)
            return nullptr;
        target = &candidate;
    }
    return target && target->enabled && !target->secure ? target : nullptr;
}

std::string AutomationObservation::stateKey() const
{
    constexpr std::string_view flags[] = {"false", "true"};
    std::string key = app + '\n' + window + '\n' + page.value_or("");
    for (const AutomationCandidate& candidate : candidates) {
        ((key += '\n') += candidate.role) += '|';
        (key += candidate.label) += '|';
        (key += candidate.value) += '|';
        (key += flags[candidate.enabled]) += '|';
        key += flags[candidate.focused];
    }
    return key;
}

AutomationObservation AutomationObservation::redacted() const
{
    AutomationObservation copy = *this;
    for (AutomationCandidate& shown : copy.candidates) {
        if (!shown.value.empty() && SafetyGuard::isSensitiveValue(shown.label, shown.role, shown.value, shown.secure))
            shown.value.clear();
    }
    return copy;
}

} // namespace quorvell
