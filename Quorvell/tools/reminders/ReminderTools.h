// SPDX-License-Identifier: MIT
// The model's hand on reminders: set_reminder.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"
#include "Quorvell/session/tools/ToolRegistry.h"
#include "Quorvell/tools/reminders/ReminderToolContext.h"

namespace quorvell {

/// The notebook must outlive the registry.
///
/// To set one, set_reminder takes text (the user's own words), or task with date ("2026-11-22 17:00") and repeat
/// ("weekly:2"), or either with when_back. With id as well it changes that one. Stored and durable, it answers
/// {"status": "set", "id", "task", "date", "when", "has_time", "repeat"?, "repeat_words"?, "when_back"?}. Otherwise
/// nothing is stored and the model is told what to ask: {"status": "which_time", "task", "choices": [{"date", "when"}],
/// "repeat"?, "message"}, {"status": "needs_time", "task", "repeat"?, "past"?, "when"?, "unclear"?,
/// "understood"?: {"rule"?, "day"?, "clock"?}, "message"} or {"status":
/// "needs_task", "date", "when", "repeat"?, "message"}.
///
/// With list it answers {"status": "reminders", "count", "reminders": [{"id", "task", "date"?, "when", "overdue"?,
/// "repeat_words"?, "when_back"?, "untrusted"?}]}, all that are pending by their times.
///
/// With done, {"status": "done", "id", "task", "next"?}. With cancel the same, and of one that repeats {"status":
/// "which_occurrences", "id", "task", "when", "repeat", "repeat_words", "message"}; with series true that one is over
/// for good, {"status": "done", "id", "task", "ended": true}, and its note stays. With later (words such as "in an
/// hour" or "by an hour"),
/// {"status": "deferred", "id", "task", "date", "when", "repeat"?, "repeat_words"?}, or which_time or needs_time as
/// above. Which reminder is meant says id, or task in words, or nothing where only one is due; when several fit,
/// {"status": "which_reminder", "reminders", "message"}.
///
/// What rings is a reminder, too. With alarm, and with timer_seconds and task as its name, one is set; the answer has
/// "kind": "alarm" or "timer", of a timer "length_seconds", "remaining_seconds" and, while it is paused, "paused", and
/// of an alarm whose hour could have been another one "other": {"date", "when"}; one that is there already is answered
/// with "already". An alarm needs no task, and always an hour. `kind` says which sort list, cancel, done and later look
/// at; an id says it by itself. pause, resume and add_seconds answer "set", stop "done", and snooze_minutes
/// "deferred"; stop and snooze_minutes are of all that rings. Several that are cancelled by ids are answered with
/// "count" and "tasks".
///
/// Whatever was changed is answered with "undo", a token; called with it alone, {"status": "undone", "what"}.
void registerReminderTools(ToolRegistry& registry, FullNotebook& notebook, ReminderToolContext context);

} // namespace quorvell
