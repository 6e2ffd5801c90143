// SPDX-License-Identifier: MIT
// What set_reminder does with alarms and timers.
#pragma once

#include "Quorvell/reminding/AlarmMark.h"
#include "Quorvell/tools/reminders/AlarmNotes.h"
#include "Quorvell/tools/reminders/ReminderAnswers.h"
#include "Quorvell/tools/reminders/ReminderArguments.h"
#include "Quorvell/tools/reminders/ReminderToolContext.h"
#include "Quorvell/tools/reminders/ReminderWriter.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Carries out one call; run once.
class ReminderAlarms {
public:
    ReminderAlarms(FullNotebook& notebook, const ReminderToolContext& context, ReminderArguments arguments, Instant now,
        ToolReply reply);

    void run();

private:
    using Meant = std::vector<Note>;

    void setAlarm();
    void setTimer();
    void silence(const std::function<void(const Meant&)>& carryOut);
    void stop(const Meant& alarms);
    void snooze(const Meant& alarms);
    void pause(const Note& timer);
    void resume(const Note& timer);
    void startAgain(const Note& timer);
    void lengthen(const Note& timer);
    void cancel(const Meant& alarms);
    void cancelOne(const Note& alarm);
    void rest(const Meant& alarms);
    void move(const Note& alarm);
    void rename(const Note& alarm);
    void withOne(const std::function<bool(const Note&)>& fits, const std::function<void(const Note&)>& carryOut);

    Meant meant(const std::function<bool(const Note&)>& fits) const;
    Meant ringing() const;
    std::vector<Note> candidates() const { return AlarmNotes::set(m_notebook.notes(), m_arguments.kind, m_now); }
    /// `before` is when the first of them was to ring.
    ReminderWriter::Answer answered(ToolStatus status, std::optional<Instant> before) const;
    void change(const Meant& notes, ReminderWriter::Change change, ToolStatus status);
    void moved(const Note& alarm, ReminderRequest request);

    FullNotebook& m_notebook;
    const ReminderToolContext& m_context;
    ReminderArguments m_arguments;
    Instant m_now;
    ReminderAnswers m_answers;
    ReminderWriter m_writer;
    ToolReply m_reply;
};

} // namespace quorvell
