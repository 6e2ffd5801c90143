// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/context/TellableContext.h"

#include "QuorvellCore/safety/SafetyGuard.h"

#include <algorithm>
#include <unordered_set>

namespace quorvell {

namespace {

std::vector<AutomationCandidate> firstOfEachID(const std::vector<AutomationCandidate>& candidates, std::size_t most)
{
    std::unordered_set<std::string_view> known;
    std::vector<AutomationCandidate> kept;
    for (std::size_t index = 0; index < std::min(most, candidates.size()); ++index) {
        if (known.insert(candidates[index].id).second)
            kept.push_back(candidates[index]);
    }
    return kept;
}

} // namespace

DecisionContext tellableContext(const DecisionContext& context, std::size_t mostCandidates)
{
    const AutomationObservation& seen = context.observation;
    const AutomationObservation shown{
        seen.revision, seen.app, seen.window, seen.page, firstOfEachID(seen.candidates, mostCandidates)};
    DecisionContext told{context.goal, shown.redacted(), context.history, std::nullopt};
    for (AutomationHistory& step : told.history) {
        if (!SafetyGuard::textRisk(step.target).isSafe())
            step.target.clear();
    }
    return told;
}

} // namespace quorvell
