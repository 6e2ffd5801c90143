// SPDX-License-Identifier: MIT
// How what keep_note, explain and save_how_to did is taken back.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/tools/UndoBook.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; lives as long as the notebook and the book.
struct NoteUndo {
    /// Changes the note back; false where it is no longer as it was left.
    using TakeBack = std::function<bool(Note& note)>;

    FullNotebook& notebook;
    UndoBook* book = nullptr;

    /// Adds to the result how it is taken back: "undo". `what` is told once that is done: "adding milk to your list".
    /// `putAway` are the ids of notes that were put away for the new one, and come back.
    void ofNew(
        const Note& note, std::string what, ToolResult& result, const std::vector<std::string>& putAway = {}) const;
    void ofChange(const std::string& id, TakeBack takeBack, std::string what, ToolResult& result) const;
    void ofRemoval(const Note& note, std::string what, ToolResult& result) const;
};

} // namespace quorvell
