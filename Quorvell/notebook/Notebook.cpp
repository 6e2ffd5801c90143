// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/Notebook.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvell {

NotebookObservation Notebook::observe(Observer changed)
{
    const int number = ++m_lastObserver;
    m_observers->emplace(number, std::move(changed));
    return NotebookObservation([observers = std::weak_ptr(m_observers), number] {
        if (const auto known = observers.lock())
            known->erase(number);
    });
}

std::vector<Note> Notebook::visibleToQuorvell() const
{
    return selected([](const Note& note) { return note.isVisibleToQuorvell(); });
}

std::vector<Note> Notebook::selected(const std::function<bool(const Note&)>& isWanted) const
{
    std::vector<Note> found;
    std::copy_if(notes().begin(), notes().end(), std::back_inserter(found), isWanted);
    return found;
}

void Notebook::announce(const NotebookChanges& changes) const
{
    // An observer may end itself or others, or the whole notebook.
    const auto observers = m_observers;
    const Observers now = *observers;
    for (const auto& [number, observer] : now)
        if (observers->contains(number))
            observer(changes);
}

} // namespace quorvell
