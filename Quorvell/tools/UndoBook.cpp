// SPDX-License-Identifier: MIT
#include "Quorvell/tools/UndoBook.h"

#include <algorithm>
#include <utility>

namespace quorvell {

std::string UndoBook::add(TakeBack takeBack)
{
    if (m_entries.size() >= mostKept)
        m_entries.pop_front();
    m_entries.push_back({"u" + std::to_string(++m_added), std::move(takeBack)});
    return m_entries.back().token;
}

void UndoBook::takeBack(const std::string& token, ToolReply reply)
{
    const auto entry = std::ranges::find(m_entries, token, &Entry::token);
    if (entry == m_entries.end()) {
        reply.fail("That was taken back already, or is too long ago to be taken back.");
        return;
    }
    const TakeBack takeBack = std::move(entry->takeBack);
    m_entries.erase(entry);
    takeBack(std::move(reply));
}

} // namespace quorvell
