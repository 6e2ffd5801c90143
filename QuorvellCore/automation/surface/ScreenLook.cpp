// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <algorithm>

namespace quorvell {

const ScreenElement* ScreenLook::element(std::string_view id) const
{
    const auto& candidates = observation.candidates;
    const auto isIt = [&](const AutomationCandidate& candidate) { return candidate.id == id; };
    const auto found = std::find_if(candidates.begin(), candidates.end(), isIt);
    if (found == candidates.end() || std::find_if(found + 1, candidates.end(), isIt) != candidates.end())
        return nullptr;
    const auto place = static_cast<std::size_t>(found - candidates.begin());
    return place < elements.size() ? &elements[place] : nullptr;
}

const AutomationCandidate* ScreenLook::elementAt(double x, double y) const
{
    const AutomationCandidate* smallest = nullptr;
    double size = 0;
    const std::size_t known = std::min(elements.size(), observation.candidates.size());
    for (std::size_t place = 0; place < known; ++place) {
        const auto& area = elements[place].area;
        if (!area || !area->contains(x, y) || (smallest && area->size() > size))
            continue;
        smallest = &observation.candidates[place];
        size = area->size();
    }
    return smallest;
}

} // namespace quorvell
