// SPDX-License-Identifier: MIT
#include "Understanding/requests/RequestEvidence.h"

#include "Understanding/requests/SkillTable.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace quorvell {

namespace {

int weightOf(const TimeWeights& times, const TimeHints& hints)
{
    return (hints.hasMoment ? times.moment : 0) + (hints.hasDay ? times.day : 0) + (hints.hasLength ? times.length : 0)
        + (hints.hasNewTime ? times.newTime : 0) + (hints.hasDuty ? times.duty : 0);
}

using Weights = std::map<std::string_view, int>; ///< By the names of kinds.

Weights weighedCues(const RequestReading& reading)
{
    Weights weights;
    for (const Skill* skill : SkillTable::all()) {
        for (const CueWeights& row : skill->weights) {
            if (!reading.has(row.cue))
                continue;
            for (const KindWeight& weight : row.weights)
                weights[weight.kind] += weight.weight;
        }
    }
    return weights;
}

} // namespace

std::vector<const RequestKind*> RequestEvidence::ranked(const RequestReading& reading, const TimeHints& hints)
{
    Weights weights = weighedCues(reading);
    std::vector<const RequestKind*> kinds;
    for (const Skill* skill : SkillTable::all()) {
        for (const RequestKind& kind : skill->kinds) {
            if ((weights[kind.name] += weightOf(kind.times, hints)) >= enough)
                kinds.push_back(&kind);
        }
    }
    std::ranges::stable_sort(kinds,
        [&](const RequestKind* left, const RequestKind* right) { return weights[left->name] > weights[right->name]; });
    return kinds;
}

} // namespace quorvell
