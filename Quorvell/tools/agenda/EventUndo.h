// SPDX-License-Identifier: MIT
// How the calendar's tools take back what they changed.
#pragma once

#include "Quorvell/agenda/Agenda.h"
#include "Quorvell/tools/UndoBook.h"
#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <string>
#include <vector>

namespace quorvell {

/// Main thread. The agenda outlives the book.
struct EventUndo {
    /// What one call changed, and what it is when that is taken back: "Lunch is in your calendar again".
    struct Deed {
        std::vector<EventTrace> traces{}; ///< In the order of the changes; the last is taken back first.
        std::string what{};
    };

    /// Adds "undo" to the result. Nothing where there is no book, or no trace of the change.
    static void offer(ToolResult& result, UndoBook* book, Agenda& agenda, const Calendar& calendar, Deed deed);
};

} // namespace quorvell
