// SPDX-License-Identifier: MIT
// Notes with the newest `created` first, one for each id.
#pragma once

#include "Quorvell/notebook/StoredNote.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace quorvell {

/// Changing one among 10,000 costs a millisecond at most, a thousand at once a few.
class NoteList {
public:
    NoteList() = default;
    /// Of two created at the same time the one that stands first here comes first.
    explicit NoteList(std::vector<StoredNote> notes);

    const std::vector<Note>& notes() const { return m_notes; }
    /// The pointer lives until the next change.
    const Note* find(const std::string& id) const;

    void put(Note note);
    void remove(const std::string& id);
    /// Many at once.
    void apply(std::vector<Note> changed, const std::vector<std::string>& gone);

    /// The notes alone, in that order.
    static std::vector<Note> sorted(std::vector<StoredNote> notes);

private:
    void sort();
    std::size_t positionOf(std::size_t fromTheEnd) const { return m_notes.size() - fromTheEnd; }
    void indexUpTo(std::size_t end);
    void indexAll();

    std::vector<Note> m_notes;
    /// By id: how far from the end, from 1 on. A new note, which comes first, leaves those of all others as they are.
    std::unordered_map<std::string, std::size_t> m_fromTheEnd;
};

} // namespace quorvell
