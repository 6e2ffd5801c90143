// SPDX-License-Identifier: MIT
// What set_reminder answers.
#pragma once

#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/text/Json.h"

#include <string>
#include <vector>

namespace quorvell {

/// Words as the user's clock and language have them at one moment.
class ReminderAnswers {
public:
    ReminderAnswers(Instant now, Calendar calendar)
        : m_now(now)
        , m_calendar(std::move(calendar))
    {
    }

    ToolResult set(const Note& note, bool hasTime) const;
    ToolResult whichTime(const ReminderRequest& request) const;
    ToolResult needsTime(const ReminderRequest& request) const;
    ToolResult needsTask(const ReminderRequest& request) const;
    ToolResult list(const std::vector<Note>& pending) const;
    ToolResult whichReminder(const std::vector<Note>& candidates) const;
    ToolResult deferred(const Note& note) const;
    ToolResult done(const Note& note) const;
    ToolResult whichOccurrences(const Note& note) const;
    ToolResult ended(const Note& note) const; ///< For good, of one that repeated.

    /// "2026-11-22 17:00", or the day alone.
    std::string date(Instant moment, bool hasTime) const;
    std::string when(Instant moment) const;

    /// One reminder in a list.
    Json entry(const Note& note) const;

private:
    /// Of what rings: "kind", and of a timer what is left of it, in seconds.
    Json ringPart(const Note& note) const;
    ToolResult withRepeat(ToolResult result, const Note& note) const;

    Instant m_now;
    Calendar m_calendar;
};

} // namespace quorvell
