// SPDX-License-Identifier: MIT
#include "LiveService/conversation/ConversationHistory.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>

namespace quorvell {

ConversationHistory::ConversationHistory(const std::vector<LiveHistoryEntry>& earlier)
{
    for (const LiveHistoryEntry& turn : earlier)
        add(turn.role, turn.text);
}

void ConversationHistory::add(std::string_view role, std::string_view text)
{
    // A turn that is larger than the whole bound is kept as far as it goes.
    m_turns.push_back(
        {std::string(role), text.size() > mostBytes ? repairUtf8(text.substr(0, mostBytes - 2)) : std::string(text)});
    m_bytes += m_turns.back().text.size();
    while (m_turns.size() > 1 && (m_turns.size() > mostTurns || m_bytes > mostBytes)) {
        m_bytes -= m_turns.front().text.size();
        m_turns.pop_front();
    }
}

double ConversationHistory::fullness() const
{
    const double turns = static_cast<double>(m_turns.size()) / mostTurns;
    const double bytes = static_cast<double>(m_bytes) / mostBytes;
    return std::min(1.0, std::max(turns, bytes));
}

std::vector<LiveHistoryEntry> ConversationHistory::last(std::size_t count) const
{
    return {m_turns.end() - static_cast<std::ptrdiff_t>(std::min(count, m_turns.size())), m_turns.end()};
}

std::string ConversationHistory::lastReply() const
{
    const auto last = std::find_if(
        m_turns.rbegin(), m_turns.rend(), [](const LiveHistoryEntry& turn) { return turn.role == "assistant"; });
    return last != m_turns.rend() ? last->text : std::string();
}

} // namespace quorvell
