// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/history/CommandHistory.h"

#include "QuorvellCore/text/Characters.h"

#include <utility>

namespace quorvell {

CommandHistory::CommandHistory(std::vector<std::string> entries, std::size_t limit)
    : m_entries(std::move(entries))
    , m_limit(limit)
{
    dropBeyondLimit();
}

void CommandHistory::add(std::string_view text)
{
    stopBrowsing();
    std::string words = trimmed(text);
    if (words.empty())
        return;
    std::erase(m_entries, words);
    m_entries.push_back(std::move(words));
    dropBeyondLimit();
}

std::optional<std::string> CommandHistory::older(std::string_view current)
{
    if (m_entries.empty() || m_cursor == 0)
        return std::nullopt;
    if (!m_cursor)
        m_draft = current;
    m_cursor = m_cursor.value_or(m_entries.size()) - 1;
    return m_entries[*m_cursor];
}

std::optional<std::string> CommandHistory::newer()
{
    if (!m_cursor)
        return std::nullopt;
    if (*m_cursor + 1 < m_entries.size())
        return m_entries[++*m_cursor];
    m_cursor.reset();
    return m_draft;
}

void CommandHistory::clear()
{
    m_entries.clear();
    stopBrowsing();
}

void CommandHistory::stopBrowsing()
{
    m_cursor.reset();
    m_draft.clear();
}

void CommandHistory::dropBeyondLimit()
{
    if (m_entries.size() > m_limit)
        m_entries.erase(m_entries.begin(), m_entries.end() - static_cast<std::ptrdiff_t>(m_limit));
}

} // namespace quorvell
