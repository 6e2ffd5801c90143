// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/screen/ObservationBounds.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace quorvell {

namespace {

bool hasNamesWithinBounds(const AutomationCandidate& candidate)
{
    return std::max({candidate.id.size(), candidate.role.size(), candidate.label.size()})
        <= ObservationBounds::longestName;
}

std::size_t byteCount(const AutomationCandidate& candidate)
{
    return candidate.id.size() + candidate.role.size() + candidate.label.size() + candidate.value.size();
}

/// Keeps the first elements; the ids of the others are returned.
std::unordered_set<std::string> leaveOut(std::vector<AutomationCandidate>& candidates)
{
    std::unordered_set<std::string> leftOut;
    std::vector<AutomationCandidate> kept;
    std::size_t bytes = 0;
    for (AutomationCandidate& candidate : candidates) {
        const bool isWithinBounds = hasNamesWithinBounds(candidate);
        bytes += isWithinBounds ? byteCount(candidate) : 0;
        if (isWithinBounds && kept.size() < ObservationBounds::mostCandidates && bytes <= ObservationBounds::mostBytes)
            kept.push_back(std::move(candidate));
        else
            leftOut.insert(std::move(candidate.id));
    }
    candidates = std::move(kept);
    return leftOut;
}

} // namespace

std::vector<std::string> ObservationBounds::keep(AutomationObservation& observation)
{
    std::vector<std::string> told;
    bool isTextCut = cut(observation.app, longestTitle);
    isTextCut = cut(observation.window, longestTitle) || isTextCut;
    for (AutomationCandidate& candidate : observation.candidates)
        isTextCut = cut(candidate.value, longestValue) || isTextCut;

    auto& candidates = observation.candidates;
    const std::size_t found = candidates.size();
    if (const auto leftOut = leaveOut(candidates); !leftOut.empty()) {
        std::erase_if(candidates, [&](const AutomationCandidate& kept) { return leftOut.contains(kept.id); });
        told.push_back("The screen has " + std::to_string(found) + " elements; only "
            + std::to_string(candidates.size()) + " of them are listed.");
    }
    if (isTextCut)
        told.emplace_back("Long texts on the screen were cut off.");
    if (observation.page && observation.page->size() > longestPage) {
        observation.page.emplace();
        told.emplace_back("The address of the page is too long to be told.");
    }
    return told;
}

bool ObservationBounds::cut(std::string& text, std::size_t most)
{
    if (text.size() <= most)
        return false;
    std::size_t end = std::min(text.size(), most * 4);
    // A sequence that the cut goes through is left out.
    while (end < text.size() && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    std::string kept = firstCharacters(std::string_view(text).substr(0, end), most);
    const bool isCut = kept.size() < text.size();
    text = std::move(kept);
    return isCut;
}

} // namespace quorvell
