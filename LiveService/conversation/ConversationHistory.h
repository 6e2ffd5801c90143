// SPDX-License-Identifier: MIT
// The turns of a conversation, the oldest forgotten first.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// How full it is tells the client when to start afresh.
class ConversationHistory {
public:
    static constexpr std::size_t mostTurns = 128;
    static constexpr std::size_t mostBytes = 128 * 2000;

    ConversationHistory() = default;
    explicit ConversationHistory(const std::vector<LiveHistoryEntry>& earlier);

    void add(std::string_view role, std::string_view text);
    /// 0 to 1, the larger share of the two limits.
    double fullness() const;
    /// The last so many turns, oldest first.
    std::vector<LiveHistoryEntry> last(std::size_t count) const;
    /// Empty when the assistant said nothing yet.
    std::string lastReply() const;

private:
    std::deque<LiveHistoryEntry> m_turns;
    std::size_t m_bytes = 0;
};

} // namespace quorvell
