#include "Quorvell/tools/ReminderTools.h"

#include "Quorvell/reminding/ReminderSchedule.h"
#include "Quorvell/tools/ReminderAnswers.h"
#include "Quorvell/tools/ReminderChanges.h"
#include "Quorvell/tools/ReminderNote.h"
#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/reminders/PhraseWords.h"
#include "QuorvellCore/reminders/ReminderRequest.h"
#include "QuorvellCore/reminders/ReminderState.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestText = 2000; ///< Bytes; a request is a sentence or two.
constexpr std::size_t longestTask = 500; ///< User-perceived characters.

/// What the model asked for: a request, or why it cannot be one, worded for the model.
struct ReadRequest {
    ReminderRequest request;
    std::string problem;
};

ReadRequest refused(std::string problem)
{
    return {{}, std::move(problem)};
}

std::string argument(const LiveFunctionCall& call, std::string_view key)
{
    return trimmed(repairUtf8(call.string(key).value_or("")));
}

bool flag(const LiveFunctionCall& call, std::string_view key)
{
    return readBool(call.args, key).value_or(false);
}

std::string tooLong(const LiveFunctionCall& call)
{
    for (const char* key : {"text", "task", "later", "id"}) {
        if (argument(call, key).size() > longestText)
            return std::string("Nothing was set: ") + key + " is too long. Give the request in one or two sentences.";
    }
    return {};
}

ReadRequest readDated(const std::string& task, const std::string& dateText, std::optional<ReminderRepeat> repeat,
    const ReminderToolContext& context)
{
    const auto parts = DateParts::parse(dateText);
    const auto start = parts ? parts->instant(context.calendar) : std::nullopt;
    if (!start)
        return refused("Nothing was set: date must be a day that exists, written like \"2026-11-22 17:00\" or, for a "
                       "whole day, \"2026-11-22\".");
    const Instant date = parts->allDay
        ? context.calendar.instant(context.calendar.day(*start), std::chrono::hours(PhraseWords::defaultHour))
        : *start;
    return {
        ReminderRequest::settled(task, date, !parts->allDay, std::move(repeat), context.now(), context.calendar), {}};
}

ReadRequest readRequest(const LiveFunctionCall& call, const ReminderToolContext& context)
{
    const std::string text = argument(call, "text");
    const std::string task = argument(call, "task");
    const std::string date = argument(call, "date");
    const std::string repeatText = argument(call, "repeat");
    const auto repeat = ReminderRepeat::fromStored(repeatText);
    if (!repeatText.empty() && !repeat)
        return refused(
            "Nothing was set: repeat must be \"daily\", \"weekdays\", \"weekly:2\" (1 is Sunday, 7 Saturday), "
            "\"monthly:15\" or \"yearly\".");

    const std::string words = text.empty() ? task : text;
    const auto understood = ReminderRequest::fromWords(words, context.now(), context.calendar);
    const std::string wantedTask = task.empty() || text.empty() ? understood.task : withUpperCaseFirst(task);
    if (!date.empty()) {
        // A task by itself is taken as it stands: a "weekly magazine" repeats nothing.
        return readDated(task.empty() ? wantedTask : withUpperCaseFirst(task), date,
            repeat || text.empty() ? repeat : understood.repeatRule, context);
    }
    if (words.empty())
        return refused("Nothing was set: text is missing. Give the user's own words, time and all.");

    ReminderRequest request = understood;
    if (repeat)
        request.repeatRule = repeat;
    if (request.verdict == ReminderRequest::Verdict::ready || request.verdict == ReminderRequest::Verdict::needsTask)
        request = ReminderRequest::settled(
            wantedTask, request.date, request.hasTime, request.repeatRule, context.now(), context.calendar);
    request.task = wantedTask;
    return {std::move(request), {}};
}

/// Carries out one call of the tool.
class ReminderTool {
public:
    ReminderTool(Notebook& notebook, const ReminderToolContext& context, const LiveFunctionCall& call, ToolReply reply)
        : m_notebook(notebook)
        , m_context(context)
        , m_call(call)
        , m_now(context.now())
        , m_answers(m_now, context.calendar)
        , m_reply(std::move(reply))
    {
    }

    void run()
    {
        if (std::string problem = tooLong(m_call); !problem.empty())
            return m_reply.fail(problem);
        if (flag(m_call, "list"))
            return m_reply.answer(m_answers.list(pending()));
        if (flag(m_call, "done"))
            return withMeant([this](const Note& note) { finish(note); });
        if (!argument(m_call, "later").empty())
            return withMeant([this](const Note& note) { putOff(note); });
        if (!argument(m_call, "id").empty())
            return withMeant([this](const Note& note) { change(note); });
        if (flag(m_call, "when_back"))
            return setForReturn();
        set();
    }

private:
    using Answer = std::function<Json(const Note&, const ReminderAnswers&)>;

    std::vector<Note> pending() const { return pendingReminders(m_notebook.notes(), ReminderAudience::model); }

    void withMeant(const std::function<void(const Note&)>& carryOut)
    {
        const std::string id = argument(m_call, "id");
        const std::string task = argument(m_call, "task");
        const auto meant = meantReminders(pending(), id, task.empty() ? argument(m_call, "text") : task, m_now);
        if (meant.size() == 1)
            return carryOut(meant.front());
        if (meant.size() > 1)
            return m_reply.answer(m_answers.whichReminder(meant));
        m_reply.fail(!id.empty() ? "Nothing was changed: no pending reminder has that id. Call set_reminder with list."
                : task.empty()   ? "Nothing was changed: no reminder is due. Call set_reminder with list and ask which."
                                 : "Nothing was changed: no pending reminder has these words. Call set_reminder with "
                                   "list and ask which.");
    }

    void finish(const Note& note)
    {
        update(
            note,
            [now = m_now, calendar = m_context.calendar](
                Note& stored) { ReminderSchedule::finish(stored, now, calendar); },
            [](const Note& stored, const ReminderAnswers& answers) { return answers.done(stored); });
    }

    void putOff(const Note& note)
    {
        ReminderRequest until =
            putOffRequest(argument(m_call, "later"), m_now, m_context.calendar, note.remindAt.value_or(m_now));
        until.task = note.title;
        if (until.verdict != ReminderRequest::Verdict::ready)
            return ask(until, note.id);
        update(
            note, [date = until.date](Note& stored) { ReminderState::later(stored, date); },
            [](const Note& stored, const ReminderAnswers& answers) { return answers.deferred(stored); });
    }

    /// Another task, another time, another rule, or on the user's return.
    void change(const Note& note)
    {
        const std::string task = withUpperCaseFirst(argument(m_call, "task"));
        const bool isForReturn = flag(m_call, "when_back");
        const bool hasTime = !argument(m_call, "text").empty() || !argument(m_call, "date").empty();
        if (characterCount(task) > longestTask)
            return m_reply.fail("Nothing was changed: the task is too long. Say it in one sentence.");
        ReminderRequest request;
        if (hasTime) {
            const ReadRequest read = readRequest(m_call, m_context);
            if (!read.problem.empty())
                return m_reply.fail(read.problem);
            request = read.request;
            if (request.verdict != ReminderRequest::Verdict::ready
                && request.verdict != ReminderRequest::Verdict::needsTask)
                return ask(request, note.id);
        }
        const auto repeat = ReminderRepeat::fromStored(argument(m_call, "repeat"));
        if (!hasTime && task.empty() && !isForReturn && !repeat)
            return m_reply.fail(
                "Nothing was changed: say what is to change, by task, date, repeat or when_back, or give "
                "done or later.");
        update(
            note,
            [=](Note& stored) {
                if (!task.empty())
                    stored.title = task;
                if (repeat || request.repeatRule)
                    stored.repeatRule = (repeat ? *repeat : *request.repeatRule).stored();
                if (isForReturn)
                    ReminderState::whenBack(stored);
                else if (hasTime)
                    ReminderState::later(stored, request.date);
            },
            [](const Note& stored, const ReminderAnswers& answers) { return answers.set(stored, true); });
    }

    void set()
    {
        const ReadRequest read = readRequest(m_call, m_context);
        if (!read.problem.empty())
            return m_reply.fail(read.problem);
        if (read.request.verdict != ReminderRequest::Verdict::ready)
            return ask(read.request, "");
        store(reminderNote(read.request, m_context.newID(), NoteAuthor::quorvell, NoteOrigin::conversation, m_now),
            read.request.hasTime);
    }

    void setForReturn()
    {
        const std::string task = argument(m_call, "task");
        const std::string words = task.empty() ? argument(m_call, "text") : task;
        ReminderRequest request = ReminderRequest::fromWords(words, m_now, m_context.calendar);
        if (!task.empty())
            request.task = withUpperCaseFirst(task);
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
        Json result;
        switch (request.verdict) {
        case ReminderRequest::Verdict::whichTime:
            result = m_answers.whichTime(request);
            break;
        case ReminderRequest::Verdict::ready:
        case ReminderRequest::Verdict::needsTask:
            result = m_answers.needsTask(request);
            break;
        case ReminderRequest::Verdict::needsTime:
        case ReminderRequest::Verdict::pastTime:
            result = m_answers.needsTime(request);
            break;
        }
        if (!id.empty())
            result["id"] = id;
        m_reply.answer(result);
    }

    void store(Note note, bool hasTime)
    {
        if (characterCount(note.title) > longestTask)
            return m_reply.fail("Nothing was set: the task is too long. Say it in one sentence.");
        const Json result = m_answers.set(note, hasTime);
        const auto answer = std::make_shared<ToolReply>(std::move(m_reply));
        m_notebook.add(std::move(note), [answer, result](const NotebookVerdict& verdict) {
            if (verdict.isStored)
                answer->answer(result);
            else
                answer->fail(verdict.problem);
        });
    }

    void update(const Note& note, std::function<void(Note&)> change, Answer toAnswer)
    {
        const auto reply = std::make_shared<ToolReply>(std::move(m_reply));
        const auto stored = [&notebook = m_notebook, id = note.id, answers = m_answers, reply,
                                toAnswer = std::move(toAnswer)](const NotebookVerdict& verdict) {
            const auto now = notebook.note(id);
            if (!verdict.isStored || !now)
                reply->fail(verdict.isStored ? "The reminder is gone. Call set_reminder with list." : verdict.problem);
            else
                reply->answer(toAnswer(*now, answers));
        };
        m_notebook.update(note.id, std::move(change), stored);
    }

    Notebook& m_notebook;
    const ReminderToolContext& m_context;
    const LiveFunctionCall& m_call;
    Instant m_now;
    ReminderAnswers m_answers;
    ToolReply m_reply;
};

} // namespace

void registerReminderTools(ToolRegistry& registry, Notebook& notebook, ReminderToolContext context)
{
    const auto shared = std::make_shared<const ReminderToolContext>(std::move(context));
    registry.add("set_reminder", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        ReminderTool(notebook, *shared, call, std::move(reply)).run();
    });
}

} // namespace quorvell
