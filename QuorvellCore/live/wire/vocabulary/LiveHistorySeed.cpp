// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/vocabulary/LiveHistorySeed.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <utility>

namespace quorvell {

std::vector<LiveHistoryEntry> LiveHistorySeed::of(const std::vector<LiveHistoryEntry>& history)
{
    std::vector<LiveHistoryEntry> seed;
    for (std::size_t index = history.size() - std::min(history.size(), entries); index < history.size(); ++index) {
        const auto& [role, text] = history[index];
        if (std::string cut = firstCharacters(trimmed(text), characters); !cut.empty())
            seed.push_back({role, std::move(cut)});
    }
    return seed;
}

} // namespace quorvell
