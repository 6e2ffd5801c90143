// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/ReminderNote.h"

#include <utility>

namespace quorvell {

Note reminderNote(const ReminderRequest& request, std::string id, NoteAuthor author, NoteOrigin origin, Instant now)
{
    Note note;
    note.id = std::move(id);
    note.kind = NoteKind::note;
    note.title = request.task;
    note.created = now;
    note.updated = now;
    note.author = author;
    note.origin = origin;
    note.remindAt = request.date;
    if (request.repeatRule)
        note.repeatRule = request.repeatRule->stored();
    return note;
}

} // namespace quorvell
