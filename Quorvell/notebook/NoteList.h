// SPDX-License-Identifier: MIT
// Notes with the newest `created` first, one for each id.
#pragma once

#include "Quorvell/notebook/StoredNote.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace quorvell {

/// Changing one among 10,000 costs a millisecond or two, a thousand at once a few.
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
    void indexFrom(std::size_t position);
    void indexAll();

    std::vector<Note> m_notes;
    std::unordered_map<std::string, std::size_t> m_positions; ///< By id.
};

} // namespace quorvell
