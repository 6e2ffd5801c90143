// SPDX-License-Identifier: MIT
// What the model should know of the notebook from its first word: confirmed facts about the user, pinned notes, how-tos
// that are under way, reminders that are due.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <string>
#include <vector>

namespace quorvell {

/// Markdown, at most about 4,000 characters; what does not fit is counted. What came from the screen or the web stands
/// between fences that it cannot close, marked as no instruction. Empty when there is nothing to tell.
std::string notebookDigest(const std::vector<Note>& notes, Instant now, const Calendar& calendar);

} // namespace quorvell
