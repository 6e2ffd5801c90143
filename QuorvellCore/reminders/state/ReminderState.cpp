// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/state/ReminderState.h"

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/reminders/state/ReminderTrigger.h"

#include <algorithm>

namespace quorvell {

namespace {

bool waitsForReturn(const Note& note)
{
    return note.trigger == storedText(ReminderTrigger::backAtMac);
}

/// The rules look only some days beyond their base, so a reminder that was left alone for longer than that counts on
/// from the same time of day shortly before now.
Instant broughtNear(Instant base, Instant now, const Calendar& calendar)
{
    const auto distance = calendar.day(now) - calendar.day(base);
    const Instant moved = calendar.addingDays(base, distance);
    return moved <= now ? moved : calendar.addingDays(base, distance - std::chrono::days(1));
}

} // namespace

bool ReminderState::isPending(const Note& note)
{
    if (note.archived)
        return false;
    if (waitsForReturn(note))
        return !note.doneAt;
    if (!note.remindAt)
        return false;
    return !note.doneAt || *note.doneAt < *note.remindAt;
}

bool ReminderState::isDue(const Note& note, Instant now)
{
    return isPending(note) && !waitsForReturn(note) && note.remindAt && *note.remindAt <= now;
}

void ReminderState::done(Note& note, Instant now, const Calendar& calendar)
{
    note.doneAt = now;
    const auto rule = note.repeatRule ? ReminderRepeat::fromStored(*note.repeatRule) : std::nullopt;
    if (!rule || !note.remindAt)
        return;
    const Instant base = *note.remindAt;
    const Instant after = std::max(base, now);
    note.remindAt = rule->next(after, base, calendar);
    if (!note.remindAt && base < now)
        note.remindAt = rule->next(after, broughtNear(base, now, calendar), calendar);
}

void ReminderState::later(Note& note, Instant to)
{
    note.remindAt = to;
    if (waitsForReturn(note))
        note.trigger.reset();
    if (note.doneAt && *note.doneAt >= to)
        note.doneAt.reset();
}

void ReminderState::whenBack(Note& note)
{
    note.trigger = storedText(ReminderTrigger::backAtMac);
    note.doneAt.reset();
}

void ReminderState::cameBack(Note& note, Instant now)
{
    if (!waitsForReturn(note))
        return;
    note.trigger.reset();
    note.remindAt = now;
}

} // namespace quorvell
