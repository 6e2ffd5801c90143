#include "Quorvell/tools/ReminderTools.h"

#include "Quorvell/tools/ReminderNote.h"
#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/reminders/PhraseWords.h"
#include "QuorvellCore/reminders/ReminderRequest.h"
#include "QuorvellCore/reminders/ReminderWords.h"
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

/// Nothing when the call only sets a new reminder.
std::string problemOf(const LiveFunctionCall& call)
{
    for (const char* key : {"id", "done", "later", "when_back"}) {
        const Json* value = memberOf(call.args, key);
        if (value && *value != Json(false) && *value != Json("") && !value->is_null())
            return std::string("Nothing was changed: set_reminder cannot do \"") + key
                + "\" yet; it only sets new reminders with a time. Tell the user so.";
    }
    for (const char* key : {"text", "task"}) {
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
    if (std::string problem = problemOf(call); !problem.empty())
        return refused(std::move(problem));
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

std::string dateText(Instant date, bool hasTime, const Calendar& calendar)
{
    return (hasTime ? DateParts::from(date, calendar) : DateParts::fromDay(date, calendar)).text();
}

std::string whenWords(Instant date, const ReminderToolContext& context)
{
    return ReminderWords::spoken(date, context.now(), context.calendar, context.calendar.locale());
}

void addRepeat(Json& result, const ReminderRequest& request)
{
    if (request.repeatRule)
        result["repeat"] = request.repeatRule->stored();
}

Json whichTime(const ReminderRequest& request, const ReminderToolContext& context)
{
    Json choices = Json::array();
    for (const Instant choice : request.choices)
        choices.push_back({{"date", dateText(choice, true, context.calendar)}, {"when", whenWords(choice, context)}});
    Json result = {{"status", "which_time"}, {"task", request.task}, {"choices", std::move(choices)}};
    addRepeat(result, request);
    result["message"] = "Nothing is set yet. Ask the user which of the choices they mean, then call set_reminder again "
                        "with task, the date of that choice, and repeat if it is given here.";
    return result;
}

Json needsTime(const ReminderRequest& request)
{
    const bool isPast = request.verdict == ReminderRequest::Verdict::pastTime;
    Json result = {{"status", "needs_time"}, {"task", request.task}};
    addRepeat(result, request);
    result["message"] = isPast
        ? "Nothing is set: the time they named is already past. Say so, ask when instead, then call set_reminder again."
        : "Nothing is set yet: no day or hour was understood, or not all of it. Ask the user when, then call "
          "set_reminder again with the task and the time in one text.";
    return result;
}

Json needsTask(const ReminderRequest& request, const ReminderToolContext& context)
{
    Json result = {{"status", "needs_task"}, {"date", dateText(request.date, request.hasTime, context.calendar)},
        {"when", whenWords(request.date, context)}};
    addRepeat(result, request);
    result["message"] = "Nothing is set yet. Ask the user what they want to be reminded of, then call set_reminder "
                        "again with task, date, and repeat if it is given here.";
    return result;
}

Json isSet(const Note& note, const ReminderRequest& request, const ReminderToolContext& context)
{
    Json result = {{"status", "set"}, {"id", note.id}, {"task", note.title},
        {"date", dateText(request.date, request.hasTime, context.calendar)}, {"when", whenWords(request.date, context)},
        {"has_time", request.hasTime}};
    addRepeat(result, request);
    if (request.repeatRule)
        result["repeat_words"] = request.repeatRule->spoken(context.calendar.locale());
    return result;
}

void store(Notebook& notebook, const ReminderRequest& request, const ReminderToolContext& context, ToolReply reply)
{
    if (characterCount(request.task) > longestTask)
        return reply.fail("Nothing was set: the task is too long. Say it in one sentence.");
    Note note = reminderNote(request, context.newID(), NoteAuthor::quorvell, NoteOrigin::conversation, context.now());
    const Json result = isSet(note, request, context);
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    notebook.add(std::move(note), [answer, result](const NotebookVerdict& verdict) {
        if (verdict.isStored)
            answer->answer(result);
        else
            answer->fail(verdict.problem);
    });
}

void setReminder(Notebook& notebook, const ReminderToolContext& context, const LiveFunctionCall& call, ToolReply reply)
{
    const ReadRequest read = readRequest(call, context);
    if (!read.problem.empty())
        return reply.fail(read.problem);
    switch (read.request.verdict) {
    case ReminderRequest::Verdict::ready:
        return store(notebook, read.request, context, std::move(reply));
    case ReminderRequest::Verdict::whichTime:
        return reply.answer(whichTime(read.request, context));
    case ReminderRequest::Verdict::needsTime:
    case ReminderRequest::Verdict::pastTime:
        return reply.answer(needsTime(read.request));
    case ReminderRequest::Verdict::needsTask:
        return reply.answer(needsTask(read.request, context));
    }
}

} // namespace

void registerReminderTools(ToolRegistry& registry, Notebook& notebook, ReminderToolContext context)
{
    const auto shared = std::make_shared<const ReminderToolContext>(std::move(context));
    registry.add("set_reminder", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        setReminder(notebook, *shared, call, std::move(reply));
    });
}

} // namespace quorvell
