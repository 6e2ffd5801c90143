// SPDX-License-Identifier: MIT
// The command that lists reminders, ticks them off and puts them off.
#pragma once

#include "Quorvell/app/program/Command.h"
#include "Quorvell/app/reminders/WhichTime.h"
#include "Quorvell/notebook/Notebook.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace quorvell {

struct ProgramEnvironment;

struct RemindersRequest {
    enum class Action { list, done, later };

    Action action = Action::list;
    std::string id{}; ///< Or its beginning, or words of the task.
    std::string when{}; ///< Of later, in words.
    bool asJson = false; ///< One object a line.
    bool isForGood = false; ///< Of done: what repeats is over, too.
};

/// Calls `finished` with the exit code, at once or when the change is stored.
/// `whichTime` may be empty: nobody is there to be asked.
void runReminders(const RemindersRequest& request, Notebook& notebook, Instant now, const Calendar& calendar,
    std::ostream& out, std::ostream& errors, const WhichTime& whichTime, std::function<void(int)> finished);

/// `quorvell reminders [list | done ID [--for-good] | later ID WHEN...] [--json]`
Command remindersCommand(const ProgramEnvironment& environment);

} // namespace quorvell
