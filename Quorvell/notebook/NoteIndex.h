// SPDX-License-Identifier: MIT
// Ranked full-text search over notes, in memory.
#pragma once

#include "QuorvellCore/notebook/Note.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct NoteQuery {
    enum class Reader { assistant, person };

    std::string words; ///< All must occur, or be the beginning or another form of a word. Empty: the newest.
    std::vector<std::string>
        anyOf{}; ///< Looked for instead, where it holds something: a note has one of these phrases.
    std::optional<NoteKind> kind{};
    Reader reader = Reader::assistant; ///< What is hidden from the assistant is not hidden from the person.
    std::size_t limit = 10;
    bool withSnippets = true; ///< Each costs another search; who shows whole notes needs none.
};

struct NoteHit {
    std::string id;
    std::string snippet; ///< One line of the text around the words. "…" stands where something was left out.
};

struct NotesFound {
    std::vector<NoteHit> hits; ///< Best first; of equally good ones the one used more often, then the one changed last.
    std::size_t count = 0; ///< Of all notes that match.
};

/// Words are compared without case and accents and by their stems. Words in the title weigh more. One thread at a time.
class NoteIndex {
public:
    NoteIndex();
    ~NoteIndex();
    NoteIndex(NoteIndex&&) noexcept;
    NoteIndex& operator=(NoteIndex&&) noexcept;

    void put(const Note& note);
    /// The same in one go: many notes one by one take several times as long.
    void putAll(const std::vector<Note>& notes);
    void remove(const std::string& id);
    NotesFound find(const NoteQuery& query) const;

private:
    struct Database;

    std::unique_ptr<Database> m_database;
};

} // namespace quorvell
