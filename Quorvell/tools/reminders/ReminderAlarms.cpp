// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/ReminderAlarms.h"

#include "Quorvell/reminding/AlarmRinging.h"
#include "Quorvell/tools/reminders/AlarmEdits.h"
#include "Quorvell/tools/reminders/AlarmHour.h"
#include "Quorvell/tools/reminders/AlarmNotes.h"
#include "Quorvell/tools/reminders/ReminderChanges.h"
#include "Quorvell/tools/reminders/ReminderNote.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ReminderArguments::Kind;

constexpr std::size_t mostSet = 100; ///< Alarms and timers at once; more is a mistake.
constexpr const char* alarmName = "Alarm";

} // namespace

ReminderAlarms::ReminderAlarms(FullNotebook& notebook, const ReminderToolContext& context, ReminderArguments arguments,
    Instant now, ToolReply reply)
    : m_notebook(notebook)
    , m_context(context)
    , m_arguments(std::move(arguments))
    , m_now(now)
    , m_answers(now, context.calendar)
    , m_writer(notebook, context.undo)
    , m_reply(std::move(reply))
{
    const bool isOfTimers = m_arguments.pauses || m_arguments.resumes || m_arguments.added || m_arguments.timer;
    const bool isOfAny = m_arguments.stops || m_arguments.snooze || !m_arguments.ids.empty();
    if (m_arguments.kind == Kind::reminder)
        m_arguments.kind = isOfTimers ? Kind::timer : isOfAny ? Kind::all : Kind::alarm;
}

void ReminderAlarms::run()
{
    const auto any = [](const Note&) { return true; };
    if (m_arguments.lists)
        return m_reply.answer(m_answers.list(candidates()));
    if (m_arguments.stops)
        return silence([this](const Meant& alarms) { stop(alarms); });
    if (m_arguments.snooze)
        return silence([this](const Meant& alarms) { snooze(alarms); });
    if (m_arguments.pauses)
        return withOne([](const Note& note) { return !AlarmNotes::isPausedTimer(note); },
            [this](const Note& note) { pause(note); });
    if (m_arguments.resumes)
        return withOne(AlarmNotes::isPausedTimer, [this](const Note& note) { resume(note); });
    if (m_arguments.added)
        return withOne(any, [this](const Note& note) { lengthen(note); });
    if (m_arguments.isCancelled || m_arguments.isDone)
        return cancel(meant(any));
    if (!m_arguments.later.empty())
        return withOne(any, [this](const Note& note) { move(note); });
    if (!m_arguments.id.empty() && m_arguments.timer)
        return withOne(any, [this](const Note& note) { startAgain(note); });
    if (!m_arguments.id.empty())
        return withOne(any, [this](const Note& note) { rename(note); });
    if (candidates().size() >= mostSet)
        return m_reply.fail("Nothing was set: there are too many already. Cancel some first.");
    m_arguments.timer ? setTimer() : setAlarm();
}

void ReminderAlarms::setTimer()
{
    ReminderRequest request;
    request.task = AlarmNotes::timerTitle(m_arguments.words());
    request.date = m_now + *m_arguments.timer;
    Note note = reminderNote(request, m_context.newID(), NoteAuthor::quorvell, NoteOrigin::conversation, m_now);
    note.then = AlarmMark{.kind = AlarmMark::Kind::timer, .length = *m_arguments.timer}.stored();
    if (characterCount(note.title) > ReminderArguments::longestTask)
        return m_reply.fail("Nothing was set: the name is too long.");
    ToolResult result = m_answers.set(note, true);
    m_writer.add(std::move(note), std::move(result), std::move(m_reply));
}

void ReminderAlarms::setAlarm()
{
    m_arguments.text = AlarmNotes::withoutAlarmWords(m_arguments.text);
    ReminderRequest request = m_arguments.request(m_now, m_context.calendar);
    std::optional<Instant> other;
    if (request.verdict == ReminderRequest::Verdict::whichTime) {
        const auto hour = AlarmHour::of(request.choices, m_now, m_context.calendar);
        if (!hour)
            return m_reply.answer(m_answers.whichTime(request));
        request.date = hour->taken;
        other = hour->other;
    } else if (request.verdict == ReminderRequest::Verdict::needsTime
        || request.verdict == ReminderRequest::Verdict::pastTime) {
        return m_reply.answer(m_answers.needsTime(request));
    } else if (!request.hasTime || (!m_arguments.moment && !AlarmNotes::namesHour(m_arguments.timeWords()))) {
        // At the hour at which days, or parts of them, without one begin nobody asked to be woken.
        if (request.repeatRule)
            request.understood.rule = request.repeatRule->spoken("en");
        else
            request.understood.day = DateParts::fromDay(request.date, m_context.calendar).text();
        request.understood.clock = AlarmNotes::partOfDay(m_arguments.timeWords());
        request.verdict = ReminderRequest::Verdict::needsTime;
        return m_reply.answer(m_answers.needsTime(request));
    }
    if (m_arguments.task.empty() && AlarmNotes::isHalfReadTime(request.task)) {
        request.unclear = std::exchange(request.task, {});
        request.verdict = ReminderRequest::Verdict::needsTime;
        return m_reply.answer(m_answers.needsTime(request));
    }
    if (request.task.empty())
        request.task = alarmName;
    Note note = reminderNote(request, m_context.newID(), NoteAuthor::quorvell, NoteOrigin::conversation, m_now);
    note.then = AlarmMark{}.stored();
    if (characterCount(note.title) > ReminderArguments::longestTask)
        return m_reply.fail("Nothing was set: the task is too long. Say it in one sentence.");
    for (const Note& there : candidates())
        if (there.remindAt == note.remindAt && there.repeatRule == note.repeatRule && there.title == note.title
            && there.then == note.then)
            return m_reply.answer(m_answers.set(there, true).add("already", true));
    ToolResult result = m_answers.set(note, true);
    if (other)
        result.add("other", {{"date", m_answers.date(*other, true)}, {"when", m_answers.when(*other)}});
    m_writer.add(std::move(note), std::move(result), std::move(m_reply));
}

ReminderAlarms::Meant ReminderAlarms::ringing() const
{
    Meant audible = AlarmRinging::audible(m_notebook.notes(), m_now, m_context.calendar);
    std::erase_if(
        audible, [this](const Note& note) { return !AlarmNotes::isOfKind(note, m_arguments.kind) || note.archived; });
    return audible;
}

/// What rings. Where nothing does, one reminder that is due may be meant.
void ReminderAlarms::silence(const std::function<void(const Meant&)>& carryOut)
{
    Meant alarms = ringing();
    if (alarms.empty() && m_arguments.snooze) {
        alarms = meantReminders(pendingReminders(m_notebook.notes(), ReminderAudience::model), "", "", m_now);
        if (alarms.size() > 1)
            return m_reply.answer(m_answers.whichReminder(alarms));
    }
    alarms.empty() ? m_reply.fail("Nothing is ringing at the moment.") : carryOut(alarms);
}

void ReminderAlarms::stop(const Meant& alarms)
{
    change(
        alarms, [now = m_now, calendar = m_context.calendar](Note& note) { AlarmRinging::stop(note, now, calendar); },
        ToolStatus::done);
}

void ReminderAlarms::snooze(const Meant& alarms)
{
    const Instant until = m_now + *m_arguments.snooze;
    change(
        alarms,
        [until, now = m_now, calendar = m_context.calendar](
            Note& note) { AlarmRinging::putOff(note, until, now, calendar); },
        ToolStatus::deferred);
}

void ReminderAlarms::pause(const Note& timer)
{
    change(
        {timer}, [now = m_now](Note& note) { AlarmEdits::pause(note, now); }, ToolStatus::set);
}

void ReminderAlarms::resume(const Note& timer)
{
    change(
        {timer}, [now = m_now](Note& note) { AlarmEdits::resume(note, now); }, ToolStatus::set);
}

void ReminderAlarms::startAgain(const Note& timer)
{
    const auto mark = AlarmMark::of(timer);
    if (!mark || !mark->isTimer())
        return m_reply.fail("Nothing was changed: that is no timer. Give date or later.");
    change(
        {timer}, [length = *m_arguments.timer, now = m_now](Note& note) { AlarmEdits::startAgain(note, length, now); },
        ToolStatus::set);
}

void ReminderAlarms::lengthen(const Note& timer)
{
    const auto mark = AlarmMark::of(timer);
    const auto added = *m_arguments.added;
    // One that rings, or rang out, gets all of it from now on.
    const Instant end = std::max(timer.remindAt.value_or(m_now), m_now);
    const auto left = mark->left ? *mark->left + added : std::chrono::floor<std::chrono::seconds>(end - m_now) + added;
    if (left < std::chrono::seconds(1))
        return m_reply.fail("Nothing was changed: that is more than what is left. Cancel it, if it should end.");
    if (left > AlarmMark::longestTimer)
        return m_reply.fail("Nothing was changed: a timer runs for a week at most.");
    change(
        {timer}, [end = end + added, left](Note& note) { AlarmEdits::lengthen(note, left, end); }, ToolStatus::set);
}

/// By its ids, its id, its words; else what rings, else all there are.
ReminderAlarms::Meant ReminderAlarms::meant(const std::function<bool(const Note&)>& fits) const
{
    Meant all = candidates();
    if (!m_arguments.ids.empty()) {
        std::erase_if(all,
            [this](const Note& note) { return std::ranges::find(m_arguments.ids, note.id) == m_arguments.ids.end(); });
        return all;
    }
    const std::string words = m_arguments.words();
    if (!m_arguments.id.empty() || !words.empty())
        return meantReminders(all, m_arguments.id, words, m_now);
    if (Meant alarms = ringing(); !alarms.empty())
        return alarms;
    if (std::ranges::count_if(all, fits) > 0)
        std::erase_if(all, [&](const Note& note) { return !fits(note); });
    return all;
}

void ReminderAlarms::withOne(
    const std::function<bool(const Note&)>& fits, const std::function<void(const Note&)>& carryOut)
{
    const Meant notes = meant(fits);
    if (notes.size() > 1)
        return m_reply.answer(m_answers.whichReminder(notes));
    if (notes.size() == 1 && fits(notes.front()))
        return carryOut(notes.front());
    if (notes.empty())
        return m_reply.fail(m_arguments.kind == Kind::timer ? "Nothing was changed: there is no such timer."
                                                            : "Nothing was changed: there is no such alarm.");
    m_reply.fail(m_arguments.pauses ? "Nothing was changed: that timer is paused already."
                                    : "Nothing was changed: that timer is running already.");
}

void ReminderAlarms::cancel(const Meant& alarms)
{
    if (alarms.empty())
        return m_reply.fail(m_arguments.kind == Kind::timer ? "Nothing was cancelled: there is no such timer."
                                                            : "Nothing was cancelled: there is no such alarm.");
    const bool isWhole = !m_arguments.ids.empty();
    if (m_arguments.until && (isWhole || alarms.size() == 1))
        return rest(alarms);
    const Meant rings = ringing();
    const bool areRinging = std::ranges::all_of(
        alarms, [&](const Note& note) { return std::ranges::find(rings, note.id, &Note::id) != rings.end(); });
    if (areRinging && !isWhole && !m_arguments.ofSeries)
        return stop(alarms);
    if (alarms.size() == 1 && !isWhole)
        return cancelOne(alarms.front());
    if (!isWhole)
        return m_reply.answer(m_answers.whichReminder(alarms));
    change(
        alarms, [now = m_now, calendar = m_context.calendar](Note& note) { AlarmEdits::end(note, now, calendar); },
        ToolStatus::done);
}

/// One that repeats ends only where that was said.
void ReminderAlarms::cancelOne(const Note& alarm)
{
    if (AlarmNotes::repeats(alarm) && !m_arguments.ofSeries)
        return m_reply.answer(m_answers.whichOccurrences(alarm));
    const bool isOnce = AlarmNotes::repeats(alarm) && !*m_arguments.ofSeries;
    change(
        {alarm},
        [edit = isOnce ? AlarmEdits::endOnce : AlarmEdits::end, now = m_now, calendar = m_context.calendar](
            Note& note) { edit(note, now, calendar); },
        ToolStatus::done);
}

/// For some days only. Nothing is changed where one of them does not ring by then: another one was meant.
void ReminderAlarms::rest(const Meant& alarms)
{
    const LocalDay until = m_context.calendar.day(*m_arguments.until);
    if (!std::ranges::all_of(
            alarms, [&](const Note& note) { return AlarmEdits::ringsBy(note, until, m_context.calendar); }))
        return m_reply.fail("Nothing was changed: not all of them ring by then.");
    change(
        alarms,
        [until, now = m_now, calendar = m_context.calendar](
            Note& note) { AlarmEdits::rest(note, until, now, calendar); },
        ToolStatus::done);
}

void ReminderAlarms::moved(const Note& alarm, ReminderRequest request)
{
    std::optional<Instant> other;
    const Instant before = alarm.remindAt.value_or(m_now);
    if (request.verdict == ReminderRequest::Verdict::whichTime && !request.choices.empty()) {
        const AlarmHour hour = AlarmHour::likeBefore(request.choices, before, m_context.calendar);
        request.date = hour.taken;
        other = hour.other;
    } else if (request.verdict == ReminderRequest::Verdict::needsTime
        || request.verdict == ReminderRequest::Verdict::pastTime) {
        request.task = alarm.title;
        return m_reply.answer(m_answers.needsTime(request).add("id", alarm.id));
    } else if (!request.hasTime) { // Another day at its own hour.
        const auto parts = m_context.calendar.parts(before);
        request.date = m_context.calendar.instant(
            m_context.calendar.day(request.date), std::chrono::hours(parts.hour) + std::chrono::minutes(parts.minute));
    }
    const auto rule = request.repeatRule;
    m_writer.change(
        {alarm},
        [date = request.date, rule](Note& note) {
            ReminderState::later(note, date);
            if (rule)
                note.repeatRule = rule->stored();
            if (auto mark = AlarmMark::of(note)) {
                mark->snoozedUntil.reset();
                note.then = mark->stored();
            }
        },
        [answers = m_answers, other](const std::vector<Note>& notes) {
            ToolResult result = answers.set(notes.front(), true);
            if (other)
                result.add("other", {{"date", answers.date(*other, true)}, {"when", answers.when(*other)}});
            return result;
        },
        std::move(m_reply));
}

void ReminderAlarms::move(const Note& alarm)
{
    const auto mark = AlarmMark::of(alarm);
    if (mark && mark->isTimer())
        return m_reply.fail("Nothing was changed: a timer has no hour. Give add_seconds, or set another one.");
    moved(alarm, putOffRequest(m_arguments.later, m_now, m_context.calendar, alarm.remindAt.value_or(m_now)));
}

/// By its id: another time, another rule, another name.
void ReminderAlarms::rename(const Note& alarm)
{
    if (m_arguments.moment || !m_arguments.text.empty())
        return moved(alarm, m_arguments.request(m_now, m_context.calendar));
    if (m_arguments.task.empty() && !m_arguments.repeat && !m_arguments.endsRepeat)
        return m_reply.fail("Nothing was changed: say what is to change, by task, date, repeat or later.");
    change(
        {alarm},
        [arguments = m_arguments, calendar = m_context.calendar](Note& note) {
            const auto mark = AlarmMark::of(note);
            if (!arguments.task.empty())
                note.title = mark && mark->isTimer() ? AlarmNotes::timerTitle(arguments.task)
                                                     : withUpperCaseFirst(arguments.task);
            if (arguments.endsRepeat)
                note.repeatRule.reset();
            if (arguments.repeat && note.remindAt) {
                note.repeatRule = arguments.repeat->stored();
                note.remindAt = arguments.repeat->first(*note.remindAt, calendar);
            }
        },
        ToolStatus::set);
}

void ReminderAlarms::change(const Meant& notes, ReminderWriter::Change change, ToolStatus status)
{
    m_writer.change(notes, std::move(change), answered(status, notes.front().remindAt), std::move(m_reply));
}

ReminderWriter::Answer ReminderAlarms::answered(ToolStatus status, std::optional<Instant> before) const
{
    return [answers = m_answers, status, before](const std::vector<Note>& notes) {
        ToolResult result = status == ToolStatus::done ? answers.done(notes.front())
            : status == ToolStatus::deferred           ? answers.deferred(notes.front())
                                                       : answers.set(notes.front(), true);
        if (notes.size() == 1 && status == ToolStatus::done && before) // Which one it was is heard by its time.
            result.add("date", answers.date(*before, true)).add("when", answers.when(*before));
        if (notes.size() == 1)
            return result;
        Json titles = Json::array();
        for (const Note& note : notes)
            titles.push_back(note.title);
        return result.add("count", notes.size()).add("tasks", std::move(titles));
    };
}

} // namespace quorvell
