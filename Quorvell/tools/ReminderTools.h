// The model's hand on reminders: set_reminder.
#pragma once

#include "Quorvell/notebook/Notebook.h"
#include "Quorvell/session/ToolRegistry.h"
#include "QuorvellCore/reminders/Calendar.h"

#include <functional>
#include <string>

namespace quorvell {

struct ReminderToolContext {
    std::function<Instant()> now; ///< By the wall clock.
    Calendar calendar; ///< Of the user: zone and locale.
    std::function<std::string()> newID;
};

/// The notebook must outlive the registry.
///
/// set_reminder takes text (the user's own words), or task with date ("2026-11-22 17:00") and repeat ("weekly:2").
/// Stored and durable, it answers {"status": "set", "id", "task", "date", "when", "has_time", "repeat"?,
/// "repeat_words"?}. Otherwise nothing is stored and the model is told what to ask: {"status": "which_time", "task",
/// "choices": [{"date", "when"}], "repeat"?, "message"}, {"status": "needs_time", "task", "repeat"?, "message"} or
/// {"status": "needs_task", "date", "when", "repeat"?, "message"}.
void registerReminderTools(ToolRegistry& registry, Notebook& notebook, ReminderToolContext context);

} // namespace quorvell
