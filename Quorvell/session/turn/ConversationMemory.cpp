// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/ConversationMemory.h"

#include <algorithm>

namespace quorvell {

void ConversationMemory::userAsked(const std::string& text)
{
    if (!m_openFrom)
        m_openFrom = m_said;
    add(m_entries.size(), "user", text);
}

void ConversationMemory::userAskedBefore(const std::string& text)
{
    std::size_t index = indexOf(settledMark());
    while (index > 0 && m_entries[index - 1].role == "assistant")
        --index;
    add(index, "user", text);
    if (m_openFrom)
        ++*m_openFrom;
}

void ConversationMemory::assistantSaid(const std::string& text)
{
    add(m_entries.size(), "assistant", text);
}

void ConversationMemory::add(std::size_t index, const char* role, const std::string& text)
{
    ++m_said;
    m_entries.insert(m_entries.begin() + static_cast<std::ptrdiff_t>(index), {role, text});
    if (m_entries.size() > most)
        m_entries.pop_front();
}

std::vector<LiveHistoryEntry> ConversationMemory::settledSince(Mark mark) const
{
    const std::size_t first = indexOf(mark);
    const std::size_t end = std::max(first, indexOf(settledMark()));
    return {
        m_entries.begin() + static_cast<std::ptrdiff_t>(first), m_entries.begin() + static_cast<std::ptrdiff_t>(end)};
}

std::string ConversationMemory::openTexts(const char* role) const
{
    std::string texts;
    for (std::size_t index = indexOf(settledMark()); index < m_entries.size(); ++index)
        if (m_entries[index].role == role)
            texts += (texts.empty() ? "" : " ") + m_entries[index].text;
    return texts;
}

std::size_t ConversationMemory::indexOf(Mark mark) const
{
    const Mark forgotten = m_said - m_entries.size();
    return static_cast<std::size_t>(std::clamp<Mark>(mark, forgotten, m_said) - forgotten);
}

} // namespace quorvell
