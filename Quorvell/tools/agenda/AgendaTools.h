// SPDX-License-Identifier: MIT
// The model's hands on the calendar: whats_on, find_free_time, add_event, change_event.
#pragma once

#include "Quorvell/agenda/Agenda.h"
#include "Quorvell/notebook/Notebook.h"
#include "Quorvell/preferences/WakingHours.h"
#include "Quorvell/session/consent/ConsentWords.h"
#include "Quorvell/session/tools/ToolRegistry.h"
#include "Quorvell/tools/UndoBook.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <string>

namespace quorvell {

struct AgendaToolContext {
    std::function<Instant()> now; ///< By the wall clock.
    Calendar calendar; ///< Of the user: zone and locale.
    std::function<std::string()> newUid; ///< For events, unique in the world.
    ConsentWords* consent = nullptr; ///< Without it nothing is ever deleted. Outlives the registry.
    WakingHours waking{}; ///< In which free time is looked for.
    UndoBook* undo = nullptr; ///< Without it nothing can be taken back. Outlives the registry.
};

/// Agenda and notebook must outlive the registry. Dates are in the user's zone, "2026-11-22 17:00", of whole days
/// "2026-11-22"; the end of whole days is the last of them.
///
/// whats_on from?, to?, words? answers {"status": "agenda", "count", "items": [{"kind": "event" | "reminder", "id",
/// "title", "start", "end"?, "when", "place"?, "all_day"?, "repeats"?, "overdue"?, "untrusted"?}], "problems"?}. With
/// words only what holds them is given, and of a series its first time in the stretch.
/// find_free_time minutes, from?, to? answers {"status": "free", "minutes", "slots": [{"start", "end", "when"}]}: the
/// whole gaps. add_event title, start, end? or minutes?, all_day?, place?, notes?, repeat? answers {"status": "added",
/// "undo", "id", "title", "start", "end", "when", "place"?, "all_day"?, "repeats"?, "conflicts": [{"id", "title",
/// "start", "end", "when"}], "reminders"?: [those that fire meanwhile], "past"?}.
/// change_event id with changes answers the same with "changed"; with cancel first {"status": "needs_confirmation",
/// "id", "title", "start", "end", "when", "question", "message"} and, called again after the user's own clear yes,
/// {"status": "deleted", ..., "undo"}. Of a series one occurrence is meant, all of it with series. With ids in place of
/// id several go after one yes: {"status": "deleted", "count", "items", "not_deleted"?, "problem"?, "undo"}.
/// Both take back a change with nothing but its undo token: {"status": "undone", "what"}.
void registerAgendaTools(ToolRegistry& registry, Agenda& agenda, Notebook& notebook, AgendaToolContext context);

} // namespace quorvell
