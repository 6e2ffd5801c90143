#pragma once

#include "Quorvell/files/FileProblem.h"
#include "QuorvellCore/notebook/Note.h"

#include <string>

namespace quorvell {

struct NoteWritten {
    FileProblem problem = FileProblem::none;
    std::string fileName; ///< The file that holds the note now.
};

/// Writes the note durably: to `fileName`, whatever stands there, or, when that is empty, to a new file of the note's
/// own name that overwrites nothing. Blocks.
NoteWritten writeNote(const std::string& folder, const std::string& fileName, const Note& note);

} // namespace quorvell
