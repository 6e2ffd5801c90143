// SPDX-License-Identifier: MIT
// The command that shows the user's days and free time.
#pragma once

#include "Quorvell/agenda/Agenda.h"
#include "Quorvell/app/program/Command.h"
#include "Quorvell/preferences/WakingHours.h"
#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <iosfwd>
#include <vector>

namespace quorvell {

struct ProgramEnvironment;

struct AgendaRequest {
    enum class Action { today, week, free };

    Action action = Action::today;
    int minutes = 60; ///< Of free.
    bool asJson = false; ///< One object a line.
    WakingHours waking{}; ///< Of free.
};

/// Calls `finished` with the exit code once the calendars have answered.
void runAgenda(const AgendaRequest& request, Agenda& agenda, std::vector<Note> notes, Instant now,
    const Calendar& calendar, std::ostream& out, std::ostream& errors, std::function<void(int)> finished);

/// `quorvell agenda [today | week | free MINUTES] [--json]`
Command agendaCommand(const ProgramEnvironment& environment);

} // namespace quorvell
