#include "Quorvell/notebook/NoteList.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace quorvell {

NoteList::NoteList(std::vector<StoredNote> notes)
{
    m_notes.reserve(notes.size());
    for (StoredNote& stored : notes)
        m_notes.push_back(std::move(stored.note));
    sort();
}

const Note* NoteList::find(const std::string& id) const
{
    const auto found = m_positions.find(id);
    return found == m_positions.end() ? nullptr : &m_notes[found->second];
}

void NoteList::put(Note note)
{
    const auto known = m_positions.find(note.id);
    if (known != m_positions.end() && m_notes[known->second].created == note.created) {
        m_notes[known->second] = std::move(note);
        return;
    }
    remove(std::string(note.id));
    const auto place = std::partition_point(
        m_notes.begin(), m_notes.end(), [&note](const Note& other) { return other.created > note.created; });
    const auto position = static_cast<std::size_t>(place - m_notes.begin());
    m_notes.insert(place, std::move(note));
    index(position);
}

void NoteList::remove(const std::string& id)
{
    const auto known = m_positions.find(id);
    if (known == m_positions.end())
        return;
    const std::size_t position = known->second;
    m_positions.erase(known);
    m_notes.erase(m_notes.begin() + static_cast<std::ptrdiff_t>(position));
    index(position);
}

void NoteList::apply(std::vector<Note> changed, const std::vector<std::string>& gone)
{
    constexpr std::size_t few = 4;
    if (changed.size() + gone.size() <= few) {
        for (const std::string& id : gone)
            remove(id);
        for (Note& note : changed)
            put(std::move(note));
        return;
    }
    std::vector<bool> isGone(m_notes.size());
    for (const std::string& id : gone)
        if (const auto known = m_positions.find(id); known != m_positions.end())
            isGone[known->second] = true;
    bool mustSort = false;
    for (Note& note : changed) {
        const auto known = m_positions.find(note.id);
        mustSort = mustSort || known == m_positions.end() || m_notes[known->second].created != note.created;
        if (known == m_positions.end())
            m_notes.push_back(std::move(note));
        else
            m_notes[known->second] = std::move(note);
    }
    if (gone.empty() && !mustSort)
        return;
    std::vector<Note> left;
    left.reserve(m_notes.size());
    for (std::size_t position = 0; position < m_notes.size(); ++position)
        if (position >= isGone.size() || !isGone[position])
            left.push_back(std::move(m_notes[position]));
    m_notes = std::move(left);
    sort();
}

/// Positions are sorted rather than notes, which are large: each is moved once.
void NoteList::sort()
{
    std::vector<std::size_t> order(m_notes.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
        [this](std::size_t left, std::size_t right) { return m_notes[left].created > m_notes[right].created; });
    std::vector<Note> sorted;
    sorted.reserve(order.size());
    for (const std::size_t position : order)
        sorted.push_back(std::move(m_notes[position]));
    m_notes = std::move(sorted);
    m_positions.clear();
    m_positions.reserve(m_notes.size());
    index(0);
}

void NoteList::index(std::size_t from)
{
    for (std::size_t position = from; position < m_notes.size(); ++position)
        m_positions[m_notes[position].id] = position;
}

} // namespace quorvell
