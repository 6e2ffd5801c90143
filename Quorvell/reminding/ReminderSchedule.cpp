// SPDX-License-Identifier: MIT
#include "Quorvell/reminding/ReminderSchedule.h"

#include "Quorvell/reminding/AlarmMark.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "QuorvellCore/reminders/state/ReminderTrigger.h"

#include <algorithm>

namespace quorvell {

namespace {

using std::chrono::days;

/// The times at which one pending reminder fires: its own, and where it repeats those that the rule gives, for one
/// that nobody ticked off comes again all the same.
class Occurrences {
public:
    Occurrences(const Note& note, const Calendar& calendar)
        : m_base(*note.remindAt)
        , m_rule(note.repeatRule ? ReminderRepeat::fromStored(*note.repeatRule) : std::nullopt)
        , m_calendar(calendar)
    {
    }

    std::optional<Instant> latestBy(Instant now) const
    {
        if (m_base > now)
            return std::nullopt;
        Instant latest = m_base;
        // From a little more than one round of the rule before now, so that years of neglect cost no search.
        const Instant start = std::max(m_base, now - roundOfRule());
        for (auto next = nextAfter(start); next && *next <= now; next = nextAfter(*next))
            latest = *next;
        return latest;
    }

    std::optional<Instant> nextAfter(Instant moment) const
    {
        if (m_base > moment)
            return m_base;
        return m_rule ? m_rule->next(moment, near(moment), m_calendar) : std::nullopt;
    }

    bool has(Instant moment) const
    {
        return moment == m_base || nextAfter(moment - std::chrono::milliseconds(1)) == moment;
    }

private:
    days roundOfRule() const
    {
        if (!m_rule)
            return days(0);
        switch (m_rule->kind) {
        case ReminderRepeat::Kind::daily:
        case ReminderRepeat::Kind::weekdays:
        case ReminderRepeat::Kind::weekly:
            return days(8);
        case ReminderRepeat::Kind::monthly:
            return days(63);
        case ReminderRepeat::Kind::yearly:
            return days(732);
        }
        return days(732);
    }

    /// The rules by days look only some days beyond their base, which may lie anywhere before. A day on which a clock
    /// change skips the time of day would bend those that follow it.
    Instant near(Instant moment) const
    {
        const bool isByDays =
            m_rule->kind != ReminderRepeat::Kind::monthly && m_rule->kind != ReminderRepeat::Kind::yearly;
        const auto distance = m_calendar.day(moment) - m_calendar.day(m_base);
        if (!isByDays || distance <= days(3))
            return m_base;
        const Instant before = m_calendar.addingDays(m_base, distance - days(1));
        return minuteOfDay(before) == minuteOfDay(m_base) ? before : m_calendar.addingDays(m_base, distance - days(2));
    }

    int minuteOfDay(Instant moment) const
    {
        const CalendarParts parts = m_calendar.parts(moment);
        return parts.hour * 60 + parts.minute;
    }

    Instant m_base;
    std::optional<ReminderRepeat> m_rule;
    const Calendar& m_calendar;
};

bool isTimed(const Note& note)
{
    return note.remindAt && !ReminderSchedule::waitsForReturn(note) && ReminderState::isPending(note);
}

/// The clock may have been ahead when a later occurrence was shown; then the earlier ones count as shown too.
bool wasShown(const Note& note, Instant occurrence, const Occurrences& occurrences)
{
    return note.reviewed && *note.reviewed >= occurrence && occurrences.has(*note.reviewed);
}

/// When an alarm that repeats rings once more, between two of its times; nothing where it rang then.
std::optional<Instant> snoozedUntil(const Note& note)
{
    const auto mark = AlarmMark::of(note);
    const auto until = mark ? mark->snoozedUntil : std::nullopt;
    return until && !(note.reviewed && *note.reviewed >= *until) ? until : std::nullopt;
}

std::optional<Instant> dueOccurrence(const Note& note, Instant now, const Calendar& calendar)
{
    if (!isTimed(note))
        return std::nullopt;
    if (const auto snoozed = snoozedUntil(note); snoozed && *snoozed <= now)
        return snoozed;
    const Occurrences occurrences(note, calendar);
    const auto latest = occurrences.latestBy(now);
    return latest && !wasShown(note, *latest, occurrences) ? latest : std::nullopt;
}

std::optional<Instant> alarmOf(const Note& note, Instant now, const Calendar& calendar)
{
    if (!isTimed(note))
        return std::nullopt;
    if (dueOccurrence(note, now, calendar))
        return now;
    const Occurrences occurrences(note, calendar);
    auto next = occurrences.nextAfter(now);
    if (next && wasShown(note, *next, occurrences))
        next = occurrences.nextAfter(std::max(*next, *note.reviewed));
    if (const auto snoozed = snoozedUntil(note); snoozed && (!next || *snoozed < *next))
        next = snoozed;
    return next;
}

} // namespace

std::vector<DueReminder> ReminderSchedule::due(const std::vector<Note>& notes, Instant now, const Calendar& calendar)
{
    std::vector<DueReminder> found;
    for (const Note& note : notes)
        if (const auto occurrence = dueOccurrence(note, now, calendar))
            found.push_back({note, *occurrence});
    std::stable_sort(found.begin(), found.end(),
        [](const DueReminder& left, const DueReminder& right) { return left.occurrence < right.occurrence; });
    return found;
}

std::optional<Instant> ReminderSchedule::nextAlarm(
    const std::vector<Note>& notes, Instant now, const Calendar& calendar)
{
    std::optional<Instant> earliest;
    for (const Note& note : notes) {
        const auto alarm = alarmOf(note, now, calendar);
        if (alarm && (!earliest || *alarm < *earliest))
            earliest = alarm;
    }
    return earliest;
}

void ReminderSchedule::finish(Note& note, Instant now, const Calendar& calendar)
{
    const bool repeats = note.repeatRule && ReminderRepeat::fromStored(*note.repeatRule);
    if (!repeats && note.remindAt && *note.remindAt > now)
        note.remindAt = now;
    ReminderState::done(note, now, calendar);
}

bool ReminderSchedule::waitsForReturn(const Note& note)
{
    return note.trigger == storedText(ReminderTrigger::backAtMac) && ReminderState::isPending(note);
}

} // namespace quorvell
