// SPDX-License-Identifier: MIT
#include "Quorvell/practice/run/RecordedSteps.h"

#include <string>
#include <string_view>

namespace quorvell {

namespace {

/// Empty unless exactly one usable element is meant.
std::string idOf(std::string_view target, const AutomationObservation& screen)
{
    const std::size_t bar = target.rfind('|');
    const std::string_view label = target.substr(0, bar);
    const std::string_view role = bar == std::string_view::npos ? std::string_view() : target.substr(bar + 1);
    std::string id;
    for (const AutomationCandidate& candidate : screen.candidates) {
        if (candidate.label != label || !(role.empty() || candidate.role == role) || !candidate.enabled)
            continue;
        if (!id.empty())
            return {};
        id = candidate.id;
    }
    return id;
}

} // namespace

std::optional<AutomationDecision> RecordedSteps::next(const AutomationObservation& screen)
{
    if (m_position == m_steps.size())
        return std::nullopt;
    AutomationDecision decision = m_steps[m_position++];
    if (decision.action && decision.action->target)
        decision.action->target = idOf(*decision.action->target, screen);
    return decision;
}

} // namespace quorvell
