// SPDX-License-Identifier: MIT
// The note that keeps a request that is ready.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include <string>

namespace quorvell {

/// Fires at its time: no trigger.
Note reminderNote(const ReminderRequest& request, std::string id, NoteAuthor author, NoteOrigin origin, Instant now);

} // namespace quorvell
