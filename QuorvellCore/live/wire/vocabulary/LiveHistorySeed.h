// SPDX-License-Identifier: MIT
// What of an earlier conversation seeds a fresh session.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"

#include <cstddef>
#include <vector>

namespace quorvell {

struct LiveHistorySeed {
    static constexpr std::size_t entries = 128; ///< Only the last so many are looked at.
    static constexpr std::size_t characters = 2000; ///< User-perceived, for each entry.

    /// Trimmed, cut and without the blank ones, which count among the last entries too.
    static std::vector<LiveHistoryEntry> of(const std::vector<LiveHistoryEntry>& history);
};

} // namespace quorvell
