// SPDX-License-Identifier: MIT
// What the notes command changes of notes that are there.
#pragma once

#include "Quorvell/app/notes/NotesRequest.h"
#include "QuorvellCore/notebook/Note.h"

#include <iosfwd>

namespace quorvell {

struct ProgramEnvironment;

/// The exit code of edit, tick, picture, restore, confirm and delete.
/// Hands the change to whichever program owns the notebook. Makes its own event loop where there is none.
int changeNote(const NotesRequest& request, const Note& note, const ProgramEnvironment& environment, std::ostream& out,
    std::ostream& errors);

} // namespace quorvell
