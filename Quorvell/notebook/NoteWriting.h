// SPDX-License-Identifier: MIT
// Writes single notes into the folder, over nobody else's changes.
#pragma once

#include "Quorvell/files/FileProblem.h"
#include "Quorvell/notebook/StoredNote.h"

#include <optional>
#include <string>

namespace quorvell {

/// Where a note is to be written.
struct NotePlace {
    std::string fileName; ///< Empty for a note that has no file yet.
    std::optional<FileStamp> stamp; ///< How the file was when it was last seen. Nothing when it is gone.
};

struct [[nodiscard]] NoteWritten {
    FileProblem problem = FileProblem::none; ///< `changedMeanwhile`: read the file before you write again.
    NoteFileRecord file; ///< That holds the note now.
};

/// Writes the note durably. Overwrites nothing but its own file, and that only as it was last seen; where there is
/// none, or it is gone, the note gets a file of a name that is free. Blocks.
NoteWritten writeNote(const std::string& folder, const NotePlace& place, const Note& note);

} // namespace quorvell
