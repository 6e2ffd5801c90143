// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ActionLedger.h"

#include <algorithm>
#include <utility>

namespace quorvell {

void ActionLedger::add(Entry entry)
{
    m_entries.push_back(std::move(entry));
    if (m_entries.size() > mostEntries)
        m_entries.pop_front();
    if (m_entries.size() <= mostWithLooks)
        return;
    Entry& old = m_entries[m_entries.size() - mostWithLooks - 1];
    old.after.reset();
    if (std::holds_alternative<ActionUndo>(old.undo))
        old.undo = std::string("Too much was done since then.");
}

const ActionLedger::Entry* ActionLedger::last() const
{
    const auto found =
        std::find_if(m_entries.rbegin(), m_entries.rend(), [](const Entry& entry) { return !entry.isUndone; });
    return found == m_entries.rend() ? nullptr : &*found;
}

void ActionLedger::markLastUndone()
{
    const auto found =
        std::find_if(m_entries.rbegin(), m_entries.rend(), [](const Entry& entry) { return !entry.isUndone; });
    if (found != m_entries.rend())
        found->isUndone = true;
}

} // namespace quorvell
