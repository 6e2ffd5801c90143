// SPDX-License-Identifier: MIT
// What the notes command does that concerns no note that is there already.
#pragma once

#include "Quorvell/app/notes/NotesListing.h"
#include "Quorvell/app/notes/NotesRequest.h"

#include <iosfwd>

namespace quorvell {

struct ProgramEnvironment;

/// The exit code of add, remember, facts and forget-facts.
/// Goes through whichever program owns the notebook. Makes its own event loop where there is none.
int keepNotes(const NotesRequest& request, const NotesListing& listing, const ProgramEnvironment& environment,
    std::ostream& out, std::ostream& errors);

} // namespace quorvell
