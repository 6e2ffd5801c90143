// SPDX-License-Identifier: MIT
// A note in the user's own editor.
#pragma once

#include "QuorvellCore/notebook/Note.h"

#include <optional>
#include <string>

namespace quorvell {

/// What came of a visit to the editor.
struct [[nodiscard]] EditedNote {
    std::optional<Note> note; ///< Nothing when nothing was changed, or it could not be read again.
    std::string problem; ///< In the latter case: what to do. What was typed is never thrown away.
};

/// Lets the user edit a note's file form in a file of its own, so that the notebook holds whole notes only. Waits for
/// the editor. `command` may have arguments.
EditedNote editNote(const Note& note, const std::string& command, const std::string& temporaryFolder);

} // namespace quorvell
