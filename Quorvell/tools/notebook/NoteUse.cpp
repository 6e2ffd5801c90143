// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/NoteUse.h"

#include <utility>

namespace quorvell {

NoteUse::NoteUse(Notebook& notebook, std::function<Instant()> now)
    : m_notebook(notebook)
    , m_now(std::move(now))
{
}

std::int64_t NoteUse::used(const Note& note)
{
    const std::int64_t more = note.kind == NoteKind::howTo ? 1 : 0;
    if (more == 0 && note.kind != NoteKind::explanation)
        return note.timesUsed;
    const auto [known, isFirst] = m_counts.try_emplace(note.id, note.timesUsed + more);
    if (isFirst) {
        const auto change = [more, now = m_now()](Note& changed) {
            changed.timesUsed += more;
            if (!changed.remindAt) // of a reminder it says which occurrence was shown last
                changed.reviewed = now;
        };
        m_notebook.update(note.id, change, [](const NotebookVerdict&) {});
    }
    return known->second;
}

} // namespace quorvell
