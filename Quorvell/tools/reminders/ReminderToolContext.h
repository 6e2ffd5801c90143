// SPDX-License-Identifier: MIT
// What set_reminder needs besides the notebook.
#pragma once

#include "Quorvell/tools/UndoBook.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <functional>
#include <string>

namespace quorvell {

struct ReminderToolContext {
    std::function<Instant()> now; ///< By the wall clock.
    Calendar calendar; ///< Of the user: zone and locale.
    std::function<std::string()> newID;
    UndoBook* undo = nullptr; ///< Without it nothing can be taken back. Outlives the registry.
};

} // namespace quorvell
