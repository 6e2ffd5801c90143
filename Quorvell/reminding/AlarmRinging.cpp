// SPDX-License-Identifier: MIT
#include "Quorvell/reminding/AlarmRinging.h"

#include "QuorvellCore/reminders/state/ReminderState.h"

namespace quorvell {

bool AlarmRinging::mayBegin(const DueReminder& reminder, Instant now)
{
    return isAlarm(reminder.note) && now - reminder.occurrence < latestStart;
}

std::vector<Note> AlarmRinging::audible(const std::vector<Note>& notes, Instant now, const Calendar& calendar)
{
    std::vector<Note> alarms;
    for (const Note& note : notes)
        if (isAlarm(note))
            alarms.push_back(note);
    std::vector<Note> audible;
    for (const DueReminder& due : ReminderSchedule::due(alarms, now, calendar))
        if (now - due.occurrence < longest)
            audible.push_back(due.note);
    return audible;
}

std::optional<Instant> AlarmRinging::nextEnd() const
{
    std::optional<Instant> earliest;
    for (const auto& [id, reminder] : m_rings)
        if (const Instant end = reminder.occurrence + longest; !earliest || end < *earliest)
            earliest = end;
    return earliest;
}

std::vector<DueReminder> AlarmRinging::giveUp(Instant now)
{
    std::vector<DueReminder> missed;
    for (auto ring = m_rings.begin(); ring != m_rings.end();) {
        const bool isOver = now - ring->second.occurrence >= longest;
        if (isOver)
            missed.push_back(ring->second);
        ring = isOver ? m_rings.erase(ring) : std::next(ring);
    }
    return missed;
}

void AlarmRinging::stop(Note& note, Instant now, const Calendar& calendar)
{
    auto mark = AlarmMark::of(note);
    // What rang once more after a snooze has moved on to its next time already.
    if (!note.repeatRule || !note.remindAt || *note.remindAt <= now)
        ReminderState::done(note, now, calendar);
    if (!mark)
        return;
    note.archived = note.archived || !ReminderState::isPending(note);
    mark->snoozedUntil.reset();
    note.then = mark->stored();
}

void AlarmRinging::putOff(Note& note, Instant until, Instant now, const Calendar& calendar)
{
    auto mark = AlarmMark::of(note);
    if (!mark || !note.repeatRule)
        return ReminderState::later(note, until);
    stop(note, now, calendar);
    mark->snoozedUntil = until;
    note.then = mark->stored();
}

} // namespace quorvell
