// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteList.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace quorvell {

namespace {

/// The notes with the newest first, as positions: notes are large, so each is moved once. `created` gives that of the
/// note at a position.
template <typename Created> std::vector<std::size_t> newestFirst(std::size_t count, const Created& created)
{
    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
        [&created](std::size_t left, std::size_t right) { return created(left) > created(right); });
    return order;
}

} // namespace

NoteList::NoteList(std::vector<StoredNote> notes)
    : m_notes(sorted(std::move(notes)))
{
    indexAll();
}

std::vector<Note> NoteList::sorted(std::vector<StoredNote> notes)
{
    std::vector<Note> list;
    list.reserve(notes.size());
    for (const std::size_t position : newestFirst(notes.size(), [&](std::size_t at) { return notes[at].note.created; }))
        list.push_back(std::move(notes[position].note));
    return list;
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
    indexFrom(position);
}

void NoteList::remove(const std::string& id)
{
    const auto known = m_positions.find(id);
    if (known == m_positions.end())
        return;
    const std::size_t position = known->second;
    m_positions.erase(known);
    m_notes.erase(m_notes.begin() + static_cast<std::ptrdiff_t>(position));
    indexFrom(position);
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

void NoteList::sort()
{
    std::vector<Note> sorted;
    sorted.reserve(m_notes.size());
    for (const std::size_t position :
        newestFirst(m_notes.size(), [this](std::size_t at) { return m_notes[at].created; }))
        sorted.push_back(std::move(m_notes[position]));
    m_notes = std::move(sorted);
    indexAll();
}

void NoteList::indexAll()
{
    m_positions.clear();
    m_positions.reserve(m_notes.size());
    indexFrom(0);
}

void NoteList::indexFrom(std::size_t position)
{
    for (; position < m_notes.size(); ++position)
        m_positions[m_notes[position].id] = position;
}

} // namespace quorvell
