// SPDX-License-Identifier: MIT
#include "Quorvell/reminding/ReminderWatch.h"

#include "QuorvellCore/reminders/state/ReminderState.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Later than this a reminder counts as missed, and several missed ones come as one summary.
constexpr std::chrono::minutes punctual{2};
/// More at one moment come as one notice, too.
constexpr std::size_t mostAtOnce = 3;

bool isStillOpen(const Notebook& notebook, const DueReminder& reminder)
{
    const auto note = notebook.note(reminder.note.id);
    return note && ReminderState::isPending(*note) && note->remindAt == reminder.note.remindAt
        && note->then == reminder.note.then;
}

} // namespace

ReminderWatch::ReminderWatch(Ports ports)
    : m_ports(std::move(ports))
{
    m_ports.timer.onRing([this] { look(); });
    m_ports.presence.onReturn([this] { cameBack(); });
    m_ports.notifier.setReports(
        {.actionTaken = [this](const std::string& key, const std::string& action) { actionTaken(key, action); },
            .shown =
                [this](const std::string& key) {
                    if (const auto found = m_open.find(key); found != m_open.end() && !m_rings.isRinging(key))
                        writeMarks(std::vector(found->second.reminders)); // Storing may settle the notice.
                },
            .couldNotShow =
                [this](const Notice& notice) {
                    m_ports.log.record("reminder_not_shown", {{"actions", notice.actions.size()}});
                    if (m_ports.couldNotShow)
                        m_ports.couldNotShow();
                }});
    if (m_ports.sound)
        m_ports.sound->onSilence([this] {
            m_ports.log.record("alarm_not_heard", Json::object());
            if (m_ports.couldNotSound)
                m_ports.couldNotSound();
        });
    m_observation = m_ports.notebook.observe([this](const NotebookChanges&) { look(); });
}

ReminderWatch::~ReminderWatch()
{
    m_ports.timer.onRing([] {});
    m_ports.presence.onReturn([] {});
    m_ports.notifier.setReports({});
    m_ports.timer.setAlarm(std::nullopt);
    if (m_ports.sound) {
        m_ports.sound->onSilence([] {});
        m_ports.sound->stop();
    }
}

void ReminderWatch::look()
{
    // A change that this very look makes in the notes calls it again; the look under way sees to everything.
    if (std::exchange(m_isLooking, true))
        return;
    if (m_ports.notebook.isOwner()) {
        const Calendar calendar = m_ports.calendar();
        fire(ReminderSchedule::due(notesWithMarks(), m_ports.timer.now(), calendar), m_ports.timer.now(), calendar);
        withdrawSettled();
        endRings(m_ports.timer.now(), calendar);
        const auto& notes = notesWithMarks();
        m_ports.timer.setAlarm(nextLook(m_ports.timer.now(), calendar));
        m_ports.presence.setWaiting(std::any_of(notes.begin(), notes.end(), ReminderSchedule::waitsForReturn));
    } else {
        m_ports.timer.setAlarm(std::nullopt);
        m_ports.presence.setWaiting(false);
        m_rings = {};
        if (m_ports.sound)
            m_ports.sound->stop();
    }
    m_isLooking = false;
}

std::optional<Instant> ReminderWatch::nextLook(Instant now, const Calendar& calendar)
{
    const auto next = ReminderSchedule::nextAlarm(notesWithMarks(), now, calendar);
    const auto end = m_rings.nextEnd();
    return next && end ? std::min(*next, *end) : next ? next : end;
}

const std::vector<Note>& ReminderWatch::notesWithMarks()
{
    if (m_unwritten.empty()) {
        m_marked.clear();
        return m_ports.notebook.notes();
    }
    m_marked = m_ports.notebook.notes();
    for (Note& note : m_marked)
        if (const auto mark = m_unwritten.find(note.id); mark != m_unwritten.end())
            ReminderSchedule::markShown(note, mark->second);
    return m_marked;
}

void ReminderWatch::fire(const std::vector<DueReminder>& due, Instant now, const Calendar& calendar)
{
    std::vector<DueReminder> missed;
    std::vector<DueReminder> current;
    for (const DueReminder& reminder : due) {
        if (AlarmRinging::mayBegin(reminder, now) && m_rings.count() < AlarmRinging::mostAtOnce)
            ring(reminder, now, calendar);
        else
            (now - reminder.occurrence > punctual ? missed : current).push_back(reminder);
    }
    for (const auto& [reminders, mostSingle] : {std::pair(&missed, std::size_t{1}), std::pair(&current, mostAtOnce)}) {
        if (reminders->size() > mostSingle)
            show(ReminderNotice::summary(*reminders, now, calendar));
        else
            for (const DueReminder& reminder : *reminders)
                show(ReminderNotice::single(reminder, now, calendar));
    }
}

void ReminderWatch::ring(const DueReminder& reminder, Instant now, const Calendar& calendar)
{
    ReminderNotice notice = ReminderNotice::ringing(reminder, now, calendar);
    m_rings.begin(reminder);
    m_unwritten[reminder.note.id] = reminder.occurrence;
    m_ports.notifier.show(notice.notice);
    if (m_ports.sound)
        m_ports.sound->start();
    if (m_ports.announce)
        m_ports.announce(notice.announcement);
    m_ports.log.record("alarm_rang", {{"late_ms", (now - reminder.occurrence).count()}});
    m_open[notice.notice.key] = std::move(notice);
}

void ReminderWatch::endRings(Instant now, const Calendar& calendar)
{
    const std::vector<DueReminder> missed = m_rings.giveUp(now);
    if (m_ports.sound && !m_rings.isRinging())
        m_ports.sound->stop();
    for (const DueReminder& reminder : missed) {
        m_ports.log.record("alarm_missed", Json::object());
        show(ReminderNotice::single(reminder, now, calendar));
    }
}

void ReminderWatch::show(ReminderNotice notice)
{
    m_ports.notifier.show(notice.notice);
    if (m_ports.announce)
        m_ports.announce(notice.announcement);
    m_ports.log.record("reminder_fired", {{"count", notice.reminders.size()}});
    for (const DueReminder& reminder : notice.reminders)
        m_unwritten[reminder.note.id] = reminder.occurrence;
    // Where nobody listens it counts as shown when it shows: what nobody saw comes again with the next start.
    if (m_ports.announce)
        writeMarks(notice.reminders);
    m_open[notice.notice.key] = std::move(notice);
}

/// Only afterwards: a crash in between shows it twice rather than never.
void ReminderWatch::writeMarks(const std::vector<DueReminder>& reminders)
{
    for (const DueReminder& reminder : reminders)
        if (const auto mark = m_unwritten.find(reminder.note.id);
            mark != m_unwritten.end() && mark->second == reminder.occurrence)
            writeMark(reminder);
}

void ReminderWatch::writeMark(const DueReminder& reminder)
{
    const std::string id = reminder.note.id;
    const auto mark = [occurrence = reminder.occurrence](Note& note) { ReminderSchedule::markShown(note, occurrence); };
    m_ports.notebook.update(id, mark,
        [this, id, occurrence = reminder.occurrence, life = std::weak_ptr<bool>(m_life)](const auto& verdict) {
            if (life.expired())
                return;
            if (!verdict.isStored)
                m_ports.log.record("reminder_mark_failed", Json::object()); // Its sentence may name a note.
            else if (const auto found = m_unwritten.find(id); found != m_unwritten.end() && found->second == occurrence)
                m_unwritten.erase(found);
        });
}

/// What was ticked off, put off, put away or deleted elsewhere needs no notice any more.
void ReminderWatch::withdrawSettled()
{
    for (auto open = m_open.begin(); open != m_open.end();) {
        const auto& reminders = open->second.reminders;
        bool isOpen = false;
        for (const DueReminder& reminder : reminders) {
            const auto mark = m_unwritten.find(reminder.note.id);
            if (isStillOpen(m_ports.notebook, reminder))
                isOpen = true;
            else if (mark != m_unwritten.end() && mark->second == reminder.occurrence)
                m_unwritten.erase(mark);
        }
        if (!isOpen) {
            m_rings.end(open->first);
            m_ports.notifier.withdraw(open->first);
        }
        open = isOpen ? std::next(open) : m_open.erase(open);
    }
    std::erase_if(m_unwritten, [this](const auto& mark) { return !m_ports.notebook.note(mark.first); });
}

void ReminderWatch::cameBack()
{
    if (!m_ports.notebook.isOwner())
        return;
    const Instant now = m_ports.timer.now();
    std::vector<std::string> waiting;
    for (const Note& note : m_ports.notebook.notes())
        if (ReminderSchedule::waitsForReturn(note))
            waiting.push_back(note.id);
    for (const std::string& id : waiting)
        change(id, [now](Note& note) {
            if (ReminderSchedule::waitsForReturn(note))
                ReminderState::cameBack(note, now);
        });
    look();
}

void ReminderWatch::actionTaken(const std::string& key, const std::string& action)
{
    const auto found = m_open.find(key);
    if (found == m_open.end())
        return;
    const ReminderNotice notice = found->second;
    const Instant now = m_ports.timer.now();
    const Calendar calendar = m_ports.calendar();
    const bool isSnoozed = action == AlarmRinging::snoozeKey;
    const auto until =
        isSnoozed ? std::optional<Instant>(now + AlarmRinging::snooze) : notice.putOffUntil(action, now, calendar);
    if (action != ReminderNotice::doneKey && action != AlarmRinging::stopKey && !until)
        return;
    m_open.erase(found);
    m_rings.end(key);
    m_ports.notifier.withdraw(key);
    for (const DueReminder& reminder : notice.reminders) {
        if (!isStillOpen(m_ports.notebook, reminder))
            continue;
        if (AlarmRinging::isAlarm(reminder.note)) {
            change(reminder.note.id, [until, now, calendar](Note& note) {
                until ? AlarmRinging::putOff(note, *until, now, calendar) : AlarmRinging::stop(note, now, calendar);
            });
            continue;
        }
        if (until)
            change(reminder.note.id, [until](Note& note) { ReminderState::later(note, *until); });
        else
            change(reminder.note.id, [now, calendar](Note& note) { ReminderSchedule::finish(note, now, calendar); });
    }
    look();
}

void ReminderWatch::change(const std::string& id, std::function<void(Note&)> change)
{
    m_ports.notebook.update(
        id, std::move(change), [this, life = std::weak_ptr<bool>(m_life)](const NotebookVerdict& verdict) {
            if (life.expired())
                return;
            if (!verdict.isStored)
                m_ports.notifier.show({"problem", "A reminder could not be changed", verdict.problem, {}});
            look();
        });
}

} // namespace quorvell
