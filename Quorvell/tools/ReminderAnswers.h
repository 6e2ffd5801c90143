// SPDX-License-Identifier: MIT
// What set_reminder answers, as JSON.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/Calendar.h"
#include "QuorvellCore/reminders/ReminderRequest.h"
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

    Json set(const Note& note, bool hasTime) const;
    Json whichTime(const ReminderRequest& request) const;
    Json needsTime(const ReminderRequest& request) const;
    Json needsTask(const ReminderRequest& request) const;
    Json list(const std::vector<Note>& pending) const;
    Json whichReminder(const std::vector<Note>& candidates) const;
    Json deferred(const Note& note) const;
    Json done(const Note& note) const;

    /// "2026-11-22 17:00", or the day alone.
    std::string date(Instant moment, bool hasTime) const;
    std::string when(Instant moment) const;

    /// One reminder in a list.
    Json entry(const Note& note) const;

private:
    Instant m_now;
    Calendar m_calendar;
};

} // namespace quorvell
