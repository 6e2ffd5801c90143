// SPDX-License-Identifier: MIT
// The note as its file will hold it: line feeds for CR LF and valid UTF-8 in every text, and nothing that the file
// format does not keep.
#pragma once

#include "QuorvellCore/notebook/Note.h"

namespace quorvell {

/// What is shown is then what is read again later.
Note cleanedNote(Note note);

} // namespace quorvell
