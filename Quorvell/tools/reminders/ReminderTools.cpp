// SPDX-License-Identifier: MIT
#include "Quorvell/tools/reminders/ReminderTools.h"

#include "Quorvell/reminding/AlarmRinging.h"
#include "Quorvell/reminding/ReminderSchedule.h"
#include "Quorvell/tools/reminders/AlarmNotes.h"
#include "Quorvell/tools/reminders/ReminderAlarms.h"
#include "Quorvell/tools/reminders/ReminderAnswers.h"
#include "Quorvell/tools/reminders/ReminderArguments.h"
#include "Quorvell/tools/reminders/ReminderChanges.h"
#include "Quorvell/tools/reminders/ReminderNote.h"
#include "Quorvell/tools/reminders/ReminderWriter.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/reminders/state/ReminderState.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

/// Carries out one call of the tool.
class ReminderTool {
public:
    ReminderTool(
        FullNotebook& notebook, const ReminderToolContext& context, const LiveFunctionCall& call, ToolReply reply)
        : m_notebook(notebook)
        , m_context(context)
        , m_arguments(ReminderArguments::read(call, context.calendar))
        , m_now(context.now())
        , m_answers(m_now, context.calendar)
        , m_writer(notebook, context.undo)
        , m_reply(std::move(reply))
    {
    }

    void run()
    {
        if (!m_arguments.undo.empty() && m_context.undo)
            return m_context.undo->takeBack(m_arguments.undo, std::move(m_reply));
        if (!m_arguments.problem.empty())
            return m_reply.fail(m_arguments.problem);
        if (m_arguments.isOfAlarms() || isOfAlarmByID())
            return ReminderAlarms(m_notebook, m_context, m_arguments, m_now, std::move(m_reply)).run();
        if (m_arguments.lists)
            return m_reply.answer(m_answers.list(pending()));
        if (m_arguments.isDone)
            return withMeant([this](const Note& note) { finish(note); });
        if (m_arguments.isCancelled)
            return withMeant([this](const Note& note) { cancel(note); });
        if (!m_arguments.later.empty())
            return withMeant([this](const Note& note) { putOff(note); });
        if (!m_arguments.id.empty())
            return withMeant([this](const Note& note) { change(note); });
        if (m_arguments.isForReturn)
            return setForReturn();
        set();
    }

private:
    using Answer = std::function<ToolResult(const Note&, const ReminderAnswers&)>;

    /// Reminders proper; with `kind` "all", what rings too.
    std::vector<Note> pending() const
    {
        auto notes = pendingReminders(m_notebook.notes(), ReminderAudience::model);
        if (m_arguments.kind == ReminderArguments::Kind::all) {
            for (const Note& note : AlarmNotes::set(m_notebook.notes(), m_arguments.kind, m_now))
                if (!note.remindAt) // Paused.
                    notes.push_back(note);
        } else {
            std::erase_if(notes, AlarmRinging::isAlarm);
        }
        return notes;
    }

    /// An id says by itself what it is of.
    bool isOfAlarmByID() const
    {
        const auto note = m_arguments.id.empty() ? std::nullopt : m_notebook.note(m_arguments.id);
        return note && AlarmRinging::isAlarm(*note);
    }

    void withMeant(const std::function<void(const Note&)>& carryOut)
    {
        const std::string& id = m_arguments.id;
        const std::string words = m_arguments.words();
        auto meant = meantReminders(pending(), id, words, m_now);
        if (meant.empty()) // Nothing else has these words, or is due: what rings may be meant.
            meant = meantReminders(
                AlarmNotes::set(m_notebook.notes(), ReminderArguments::Kind::all, m_now), id, words, m_now);
        if (meant.size() == 1 && AlarmRinging::isAlarm(meant.front())) {
            m_arguments.kind = ReminderArguments::Kind::all;
            m_arguments.id = meant.front().id;
            return ReminderAlarms(m_notebook, m_context, m_arguments, m_now, std::move(m_reply)).run();
        }
        if (meant.size() == 1)
            return carryOut(meant.front());
        if (meant.size() > 1)
            return m_reply.answer(m_answers.whichReminder(meant));
        m_reply.fail(!id.empty() ? ToolFailure::noReminderWithID
                : words.empty()  ? ToolFailure::noReminderDue
                                 : ToolFailure::noReminderWithWords);
    }

    void finish(const Note& note)
    {
        update(
            note,
            [now = m_now, calendar = m_context.calendar](
                Note& stored) { ReminderSchedule::finish(stored, now, calendar); },
            [](const Note& stored, const ReminderAnswers& answers) { return answers.done(stored); });
    }

    /// One that repeats ends only where that was said.
    void cancel(const Note& note)
    {
        const bool repeats = note.repeatRule && ReminderRepeat::fromStored(*note.repeatRule);
        if (repeats && !m_arguments.ofSeries)
            return m_reply.answer(m_answers.whichOccurrences(note));
        if (!repeats || !*m_arguments.ofSeries)
            return finish(note);
        update(
            note,
            [now = m_now, calendar = m_context.calendar](Note& stored) {
                stored.repeatRule.reset();
                ReminderSchedule::finish(stored, now, calendar);
            },
            [](const Note& stored, const ReminderAnswers& answers) { return answers.ended(stored); });
    }

    /// "To 9", of one on a later day: nine o'clock of that day; of two the one within three hours of its old hour.
    std::optional<Instant> hourOfItsOwnDay(const ReminderRequest& until, const Note& note) const
    {
        using namespace std::chrono_literals;
        static const Pattern clock(
            "^(?:(?:at|to|until|till) )?(?:\\d{1,2}(?:[:.]\\d{2})?(?: ?[ap]\\.?m\\.?)?|noon)$", Pattern::caseless);
        const Calendar& calendar = m_context.calendar;
        if (!note.remindAt || *note.remindAt <= m_now || calendar.isSameDay(*note.remindAt, m_now)
            || !clock.find(m_arguments.later))
            return std::nullopt;
        std::vector<Instant> near;
        const bool isClear = until.verdict == ReminderRequest::Verdict::ready;
        for (const Instant choice : isClear ? std::vector{until.date} : until.choices) {
            const auto hour = calendar.localTime(choice).time_since_epoch() % 24h;
            const Instant moment = calendar.instant(calendar.day(*note.remindAt), hour);
            if (isClear || std::chrono::abs(moment - *note.remindAt) <= 3h)
                near.push_back(moment);
        }
        return near.size() == 1 ? std::optional(near.front()) : std::nullopt;
    }

    void putOff(const Note& note)
    {
        ReminderRequest until =
            putOffRequest(m_arguments.later, m_now, m_context.calendar, note.remindAt.value_or(m_now));
        until.task = note.title;
        if (const auto moment = hourOfItsOwnDay(until, note)) {
            until.verdict = ReminderRequest::Verdict::ready;
            until.date = *moment;
        }
        if (until.verdict != ReminderRequest::Verdict::ready)
            return ask(until, note.id);
        update(
            note, [date = until.date](Note& stored) { ReminderState::later(stored, date); },
            [](const Note& stored, const ReminderAnswers& answers) { return answers.deferred(stored); });
    }

    /// Another task, another time, another rule, or on the user's return.
    void change(const Note& note)
    {
        const bool hasTime = !m_arguments.isForReturn && (!m_arguments.text.empty() || m_arguments.moment);
        const bool waits = ReminderSchedule::waitsForReturn(note) && !hasTime;
        if (m_arguments.changesNothing())
            return m_reply.fail("Nothing was changed: say what is to change, by task, date, repeat or when_back, or "
                                "give done or later.");
        if (waits && m_arguments.repeat)
            return m_reply.fail("Nothing was changed: it comes when the user is back, so it cannot repeat. Give it a "
                                "date, too.");
        ReminderRequest request;
        if (hasTime) {
            request = m_arguments.request(m_now, m_context.calendar);
            if (request.verdict != ReminderRequest::Verdict::ready
                && request.verdict != ReminderRequest::Verdict::needsTask)
                return ask(request, note.id);
        }
        const bool isDay = hasTime && !request.hasTime;
        update(
            note,
            [=, arguments = m_arguments, calendar = m_context.calendar](
                Note& stored) { carryOut(arguments, hasTime ? &request : nullptr, calendar, stored); },
            [isDay](const Note& stored, const ReminderAnswers& answers) { return answers.set(stored, !isDay); });
    }

    /// `request` is the time that was asked for, if there was one.
    static void carryOut(
        const ReminderArguments& arguments, const ReminderRequest* request, const Calendar& calendar, Note& note)
    {
        if (!arguments.task.empty())
            note.title = withUpperCaseFirst(arguments.task);
        const auto repeat = arguments.repeat || !request ? arguments.repeat : request->repeatRule;
        if (repeat)
            note.repeatRule = repeat->stored();
        else if (arguments.endsRepeat)
            note.repeatRule.reset();
        if (arguments.isForReturn)
            ReminderState::whenBack(note);
        else if (request)
            ReminderState::later(note, request->date);
        else if (repeat && note.remindAt)
            note.remindAt = repeat->first(*note.remindAt, calendar);
    }

    void set()
    {
        const ReminderRequest request = m_arguments.request(m_now, m_context.calendar);
        if (request.verdict != ReminderRequest::Verdict::ready)
            return ask(request, "");
        store(reminderNote(request, m_context.newID(), NoteAuthor::quorvell, NoteOrigin::conversation, m_now),
            request.hasTime);
    }

    void setForReturn()
    {
        const ReminderRequest request = m_arguments.request(m_now, m_context.calendar);
        if (request.task.empty())
            return m_reply.fail("Nothing was set: task is missing. Ask the user what they want to be reminded of.");
        Note note = reminderNote(request, m_context.newID(), NoteAuthor::quorvell, NoteOrigin::conversation, m_now);
        note.remindAt.reset();
        note.repeatRule.reset();
        ReminderState::whenBack(note);
        store(std::move(note), false);
    }

    void ask(const ReminderRequest& request, const std::string& id)
    {
        ToolResult question = questionOf(request);
        if (!id.empty())
            question.add("id", id);
        m_reply.answer(question);
    }

    /// "Tonight", said late in the evening: only the hour is over at which it usually begins.
    bool isOpenToday(const ReminderRequest& request) const
    {
        static const Pattern today("\\b(?:today|tonight|this evening)\\b", Pattern::caseless);
        return m_context.calendar.isSameDay(request.date, m_now) && today.find(m_arguments.timeWords())
            && !AlarmNotes::namesHour(m_arguments.timeWords());
    }

    ReminderRequest withoutHour(ReminderRequest request) const
    {
        request.verdict = ReminderRequest::Verdict::needsTime;
        request.understood.day = DateParts::fromDay(request.date, m_context.calendar).text();
        return request;
    }

    ToolResult questionOf(const ReminderRequest& request) const
    {
        switch (request.verdict) {
        case ReminderRequest::Verdict::whichTime:
            return m_answers.whichTime(request);
        case ReminderRequest::Verdict::pastTime:
            return m_answers.needsTime(isOpenToday(request) ? withoutHour(request) : request);
        case ReminderRequest::Verdict::needsTime:
            return m_answers.needsTime(request);
        case ReminderRequest::Verdict::ready:
        case ReminderRequest::Verdict::needsTask:
            break;
        }
        return m_answers.needsTask(request);
    }

    void store(Note note, bool hasTime)
    {
        if (characterCount(note.title) > ReminderArguments::longestTask)
            return m_reply.fail("Nothing was set: the task is too long. Say it in one sentence.");
        ToolResult result = m_answers.set(note, hasTime);
        m_writer.add(std::move(note), std::move(result), std::move(m_reply));
    }

    void update(const Note& note, std::function<void(Note&)> change, Answer toAnswer)
    {
        m_writer.change(
            {note}, std::move(change),
            [answers = m_answers, toAnswer = std::move(toAnswer)](
                const std::vector<Note>& stored) { return toAnswer(stored.front(), answers); },
            std::move(m_reply));
    }

    FullNotebook& m_notebook;
    const ReminderToolContext& m_context;
    ReminderArguments m_arguments;
    Instant m_now;
    ReminderAnswers m_answers;
    ReminderWriter m_writer;
    ToolReply m_reply;
};

} // namespace

void registerReminderTools(ToolRegistry& registry, FullNotebook& notebook, ReminderToolContext context)
{
    const auto shared = std::make_shared<const ReminderToolContext>(std::move(context));
    registry.add("set_reminder", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        ReminderTool(notebook, *shared, call, std::move(reply)).run();
    });
}

} // namespace quorvell
