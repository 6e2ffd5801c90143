// SPDX-License-Identifier: MIT
// What was said on both sides, oldest first, and from where on it is a request that waits for its answer.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// A fresh connection is seeded with what is settled; the open request is handed to it as a request, and so never
/// twice.
class ConversationMemory {
public:
    static constexpr std::size_t most = 128; ///< As many as can seed a fresh conversation.

    using Mark = std::uint64_t; ///< How many entries there had ever been.

    void userAsked(const std::string& text);
    /// A request that was dealt with before its words were known; it stands before its answer, and is not open.
    void userAskedBefore(const std::string& text);
    void assistantSaid(const std::string& text);
    /// The open requests are answered, or given up.
    void settle() { m_openFrom.reset(); }

    /// How far a connection knows the conversation that is seeded now.
    Mark settledMark() const { return m_openFrom.value_or(m_said); }
    std::vector<LiveHistoryEntry> settled() const { return settledSince(0); }
    std::vector<LiveHistoryEntry> settledSince(Mark mark) const;

    /// The open requests in the user's words; empty without any.
    std::string openRequests() const { return openTexts("user"); }
    /// What the assistant has said to them so far.
    std::string openReplies() const { return openTexts("assistant"); }

    const std::deque<LiveHistoryEntry>& entries() const { return m_entries; }

private:
    void add(std::size_t index, const char* role, const std::string& text);
    std::string openTexts(const char* role) const;
    std::size_t indexOf(Mark mark) const;

    std::deque<LiveHistoryEntry> m_entries;
    Mark m_said = 0;
    std::optional<Mark> m_openFrom;
};

} // namespace quorvell
