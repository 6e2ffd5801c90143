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
    const auto found = m_fromTheEnd.find(id);
    return found == m_fromTheEnd.end() ? nullptr : &m_notes[positionOf(found->second)];
}

void NoteList::put(Note note)
{
    const auto known = m_fromTheEnd.find(note.id);
    if (known != m_fromTheEnd.end() && m_notes[positionOf(known->second)].created == note.created) {
        m_notes[positionOf(known->second)] = std::move(note);
        return;
    }
    remove(std::string(note.id));
    const auto place = std::partition_point(
        m_notes.begin(), m_notes.end(), [&note](const Note& other) { return other.created > note.created; });
    const auto position = static_cast<std::size_t>(place - m_notes.begin());
    m_notes.insert(place, std::move(note));
    indexUpTo(position + 1);
}

void NoteList::remove(const std::string& id)
{
    const auto known = m_fromTheEnd.find(id);
    if (known == m_fromTheEnd.end())
        return;
    const std::size_t position = positionOf(known->second);
    m_fromTheEnd.erase(known);
    m_notes.erase(m_notes.begin() + static_cast<std::ptrdiff_t>(position));
    indexUpTo(position);
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
        if (const auto known = m_fromTheEnd.find(id); known != m_fromTheEnd.end())
            isGone[positionOf(known->second)] = true;
    const std::size_t count = m_notes.size();
    bool mustSort = false;
    for (Note& note : changed) {
        const auto known = m_fromTheEnd.find(note.id);
        if (known == m_fromTheEnd.end()) {
            mustSort = true;
            m_notes.push_back(std::move(note));
            continue;
        }
        Note& there = m_notes[count - known->second];
        mustSort = mustSort || there.created != note.created;
        there = std::move(note);
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
    m_fromTheEnd.clear();
    m_fromTheEnd.reserve(m_notes.size());
    indexUpTo(m_notes.size());
}

/// The first `end` notes, which are the newest.
void NoteList::indexUpTo(std::size_t end)
{
    for (std::size_t position = 0; position < end; ++position)
        m_fromTheEnd[m_notes[position].id] = m_notes.size() - position;
}

} // namespace quorvell
