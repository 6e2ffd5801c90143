// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteVersion.h"

namespace quorvell {

NoteVersion NoteVersion::of(const Note& note)
{
    return {.date = note.updated, .title = note.title, .body = note.body, .steps = note.steps};
}

bool NoteVersion::hasTextOf(const Note& note) const
{
    return title == note.title && body == note.body && steps == note.steps;
}

} // namespace quorvell
