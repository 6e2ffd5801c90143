// SPDX-License-Identifier: MIT
// Moves the notebook to the folder that the request names ("local", "synced" or a path) and enters that folder in the
// settings, for every program that starts from then on.
#pragma once

#include "Quorvell/app/notes/NotesRequest.h"

#include <iosfwd>

namespace quorvell {

struct ProgramEnvironment;

/// The exit code.
int moveNotes(
    const NotesRequest& request, const ProgramEnvironment& environment, std::ostream& out, std::ostream& errors);

} // namespace quorvell
