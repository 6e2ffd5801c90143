// SPDX-License-Identifier: MIT
#include "Quorvell/actions/pipeline/ActionLedger.h"

#include <algorithm>
#include <utility>

namespace quorvell {

void ActionLedger::add(std::string text, const ScreenAction& action, ScreenOutcome::Kind outcome,
    const ScreenLook& before, std::shared_ptr<const ScreenLook> after)
{
    if (outcome == ScreenOutcome::Kind::failed)
        return;
    const bool isDone = outcome == ScreenOutcome::Kind::done;
    Entry entry{.text = std::move(text)};
    entry.certainty = isDone ? Certainty::done : Certainty::unknown;
    entry.undo = std::string(isDone ? "What it led to was not seen." : "Whether it was done is not known.");
    if (isDone && after) {
        entry.undo = undoOf(action, before, *after);
        entry.after = std::move(after);
    }
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

const ActionUndo* ActionLedger::wayBack() const
{
    const Entry* const entry = last();
    return entry && entry->after ? std::get_if<ActionUndo>(&entry->undo) : nullptr;
}

std::string ActionLedger::whyNoWayBack() const
{
    const Entry* const entry = last();
    if (!entry)
        return "Nothing was done on the screen that could be taken back.";
    const auto* const why = std::get_if<std::string>(&entry->undo);
    return "The last thing that was done, “" + entry->text + "”, cannot be undone. " + (why ? *why : "");
}

void ActionLedger::markLastUndone()
{
    const auto found =
        std::find_if(m_entries.rbegin(), m_entries.rend(), [](const Entry& entry) { return !entry.isUndone; });
    if (found != m_entries.rend())
        found->isUndone = true;
}

} // namespace quorvell
