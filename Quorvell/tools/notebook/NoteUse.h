// SPDX-License-Identifier: MIT
// Notes down that a note was of use: a how-to that is read, to be followed, or that a better one is based on counts one
// more use, and an explanation was looked at again.
#pragma once

#include "Quorvell/notebook/Notebook.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>

namespace quorvell {

/// Each once a conversation, however often the model reads it. Main thread.
class NoteUse {
public:
    NoteUse(Notebook& notebook, std::function<Instant()> now);

    /// How often the note has been used now. That is stored in its own time; where it cannot be, the note is read all
    /// the same.
    std::int64_t used(const Note& note);

private:
    Notebook& m_notebook;
    std::function<Instant()> m_now;
    std::map<std::string, std::int64_t> m_counts; ///< By id, of the notes that this conversation used.
};

} // namespace quorvell
