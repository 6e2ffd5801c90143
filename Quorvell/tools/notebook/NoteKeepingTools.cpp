// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/NoteKeepingTools.h"

#include "Quorvell/notebook/NoteTitle.h"
#include "Quorvell/tools/notebook/ListKeeping.h"
#include "Quorvell/tools/notebook/NoteUndo.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/TextMatch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t maximumTitle = 200; ///< Characters, as all below.
constexpr std::size_t maximumText = 100'000;
constexpr std::size_t maximumStep = 1'000;
constexpr std::size_t maximumSteps = 100;

/// A note to be kept, or what is wrong with the request, worded for the model.
struct NoteRequest {
    Note note;
    std::string problem;
};

NoteRequest refused(std::string problem)
{
    return {{}, "Nothing was kept: " + std::move(problem)};
}

/// Empty when the text is short enough.
std::string lengthProblem(const char* what, const std::string& text, std::size_t maximum, const char* advice)
{
    const std::size_t length = characterCount(text);
    if (length <= maximum)
        return "";
    return std::string("the ") + what + " has " + std::to_string(length) + " characters; at most "
        + std::to_string(maximum) + " can be kept. " + advice;
}

std::string titleProblem(const std::string& title)
{
    return lengthProblem("title", title, maximumTitle, "Give a shorter title and put the rest into the text.");
}

std::string textProblem(const std::string& text)
{
    return lengthProblem("text", text, maximumText, "Keep it as several notes.");
}

std::string textArgument(const LiveFunctionCall& call, std::string_view key)
{
    return repairUtf8(call.string(key).value_or(""));
}

std::string lineArgument(const LiveFunctionCall& call, std::string_view key)
{
    return onOneLine(textArgument(call, key));
}

Note newNote(const NotebookToolContext& context, NoteKind kind, std::string title, NoteOrigin origin)
{
    const Instant now = context.now();
    return {.id = context.newID(),
        .kind = kind,
        .title = std::move(title),
        .created = now,
        .author = NoteAuthor::quorvell,
        .origin = origin};
}

NoteRequest noteOf(const LiveFunctionCall& call, const NotebookToolContext& context)
{
    const std::string text = textArgument(call, "text");
    const std::string title = lineArgument(call, "title");
    const auto kind = call.string("kind");
    if (title.empty() && trimmed(text).empty())
        return refused("title and text are both missing. Give the words to keep as text.");
    if (kind && kind != storedText(NoteKind::note) && kind != storedText(NoteKind::clip))
        return refused("kind must be \"note\" or \"clip\". Other kinds have tools of their own.");
    for (std::string problem : {titleProblem(title), textProblem(text)})
        if (!problem.empty())
            return refused(std::move(problem));
    // A clip is what somebody else wrote, seen on the screen: never to be trusted when it is read again.
    const bool isClip = kind == storedText(NoteKind::clip);
    Note note = newNote(context, isClip ? NoteKind::clip : NoteKind::note, title.empty() ? noteTitleFrom(text) : title,
        isClip ? NoteOrigin::screen : NoteOrigin::conversation);
    note.body = text;
    return {std::move(note), ""};
}

NoteRequest explanationOf(const LiveFunctionCall& call, const NotebookToolContext& context)
{
    constexpr std::array levels{"simple", "normal", "detailed"};
    const std::string question = lineArgument(call, "question");
    const std::string text = textArgument(call, "text");
    const auto level = call.string("level");
    if (question.empty() || trimmed(text).empty())
        return refused("question or text is missing. Give what they wanted to know, and the explanation.");
    if (level && std::find(levels.begin(), levels.end(), *level) == levels.end())
        return refused("level must be \"simple\", \"normal\" or \"detailed\".");
    if (std::string problem = textProblem(text); !problem.empty())
        return refused(std::move(problem));
    Note note = newNote(context, NoteKind::explanation, noteTitleFrom(question), NoteOrigin::explainer);
    note.question = firstCharacters(question, maximumStep);
    note.body = text;
    note.level = level.value_or("normal");
    return {std::move(note), ""};
}

NoteRequest howToOf(const LiveFunctionCall& call, const NotebookToolContext& context, const FullNotebook& notebook)
{
    const std::string title = lineArgument(call, "title");
    const std::string goal = lineArgument(call, "goal");
    const auto given = readStrings(call.args, "steps");
    if (title.empty() || goal.empty() || !given || given->empty())
        return refused("a how-to needs a title, a goal and its steps, a list of texts.");
    if (given->size() > maximumSteps)
        return refused("that are more than " + std::to_string(maximumSteps) + " steps. Make several how-tos of it.");
    std::string problem = titleProblem(title);
    Note note = newNote(context, NoteKind::howTo, title, NoteOrigin::conversation);
    note.goal = firstCharacters(goal, maximumStep);
    for (const std::string& step : *given) {
        note.steps.push_back(trimmed(repairUtf8(step)));
        if (problem.empty())
            problem = lengthProblem("longest step", note.steps.back(), maximumStep, "Make several steps of it.");
    }
    std::erase(note.steps, "");
    if (const std::string based = lineArgument(call, "based_on"); !based.empty()) {
        const auto old = notebook.note(based);
        if (!old || !old->isVisibleToQuorvell() || old->kind != NoteKind::howTo)
            problem = "based_on is no how-to's id. Look it up with find_in_notebook, or leave it out.";
        note.basedOn = {based};
    }
    return problem.empty() && !note.steps.empty() ? NoteRequest{std::move(note), ""} : refused(std::move(problem));
}

ToolResult keptResult(const Note& note)
{
    return ToolResult(ToolStatus::kept).add("id", note.id).add("title", note.title);
}

/// Of a note that is new.
ToolResult keptNew(FullNotebook& notebook, const NotebookToolContext& context, const Note& note,
    const std::vector<std::string>& putAway = {})
{
    ToolResult kept = keptResult(note);
    NoteUndo{notebook, context.undo}.ofNew(note, "keeping “" + note.title + "”", kept, putAway);
    return kept;
}

/// Takes back what a token of an earlier result stands for. True when the call asks for that.
bool tookBack(const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply& reply)
{
    const auto token = call.string("undo");
    if (!token)
        return false;
    if (context.undo)
        context.undo->takeBack(*token, std::move(reply));
    else
        reply.fail("Nothing can be taken back here.");
    return true;
}

/// Tells the model what became of it.
NotebookCallback answeringKept(ToolReply reply, const ToolResult& kept)
{
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    return [answer, kept](const NotebookVerdict& verdict) {
        if (verdict.isStored)
            answer->answer(kept);
        else
            answer->fail(verdict.problem);
    };
}

/// Into the trash, for `undo` to bring it back. What other tools look after stays.
void deleteNote(FullNotebook& notebook, const NotebookToolContext& context, const std::string& id, ToolReply reply)
{
    const auto note = notebook.note(id);
    if (!note || !note->isVisibleToQuorvell())
        return reply.fail("Nothing was deleted: there is no such note.");
    if (note->remindAt || note->trigger)
        return reply.fail("Nothing was deleted: that is a reminder. Cancel it with set_reminder.");
    if (note->kind == NoteKind::aboutMe)
        return reply.fail("Nothing was deleted: that is known about the user. remember_about_them forgets it.");
    ToolResult deleted(ToolStatus::deleted);
    deleted.add("id", note->id).add("title", note->title);
    NoteUndo{notebook, context.undo}.ofRemoval(*note, "deleting “" + note->title + "”", deleted);
    notebook.delete_(id, answeringKept(std::move(reply), deleted));
}

/// The explanation that answers the same question, told apart by its words only.
const Note* knownExplanation(const FullNotebook& notebook, const Note& wanted)
{
    const std::string question = TextMatch::normalized(wanted.question.value_or(""));
    const auto& notes = notebook.notes();
    const auto found = std::find_if(notes.begin(), notes.end(), [&question](const Note& note) {
        return note.kind == NoteKind::explanation && note.isVisibleToQuorvell() && note.question
            && TextMatch::normalized(*note.question) == question;
    });
    return found == notes.end() ? nullptr : &*found;
}

} // namespace

void keepNote(FullNotebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply)
{
    if (tookBack(context, call, reply))
        return;
    if (const auto id = call.string("note"))
        return readBool(call.args, "delete").value_or(false)
            ? deleteNote(notebook, context, *id, std::move(reply))
            : reply.fail("Nothing was changed: note needs delete. read_note reads it.");
    if (const auto list = ListRequest::of(call))
        return keepList(notebook, context, *list, std::move(reply));
    NoteRequest request = noteOf(call, context);
    if (!request.problem.empty())
        return reply.fail(request.problem);
    const NotebookCallback done = answeringKept(std::move(reply), keptNew(notebook, context, request.note));
    notebook.add(std::move(request.note), done);
}

void explain(FullNotebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply)
{
    if (tookBack(context, call, reply))
        return;
    NoteRequest request = explanationOf(call, context);
    if (!request.problem.empty())
        return reply.fail(request.problem);
    const Note* const known = knownExplanation(notebook, request.note);
    if (!known) {
        const NotebookCallback done = answeringKept(std::move(reply), keptNew(notebook, context, request.note));
        return notebook.add(std::move(request.note), done);
    }
    const auto change = [wanted = request.note](Note& note) {
        note.body = wanted.body;
        note.level = wanted.level;
    };
    const std::string id = known->id;
    ToolResult kept = keptResult(*known);
    const auto takeBack = [body = known->body, level = known->level, after = request.note.body](Note& note) {
        if (note.body != after)
            return false;
        note.body = body;
        note.level = level;
        return true;
    };
    NoteUndo{notebook, context.undo}.ofChange(id, takeBack, "explaining “" + known->title + "” anew", kept);
    notebook.update(id, change, answeringKept(std::move(reply), kept));
}

void saveHowTo(FullNotebook& notebook, NoteUse& use, const NotebookToolContext& context, const LiveFunctionCall& call,
    ToolReply reply)
{
    if (tookBack(context, call, reply))
        return;
    NoteRequest request = howToOf(call, context, notebook);
    if (!request.problem.empty())
        return reply.fail(request.problem);
    const std::vector<std::string> replaced = request.note.basedOn;
    if (!replaced.empty())
        request.note.timesUsed = use.used(*notebook.note(replaced.front()));
    const NotebookCallback answer = answeringKept(std::move(reply), keptNew(notebook, context, request.note, replaced));
    const auto done = [&notebook, replaced, answer](const NotebookVerdict& verdict) {
        // Put away only once its successor is safe; that this may fail does not unkeep the new one.
        if (verdict.isStored && !replaced.empty())
            notebook.update(
                replaced.front(), [](Note& note) { note.archived = true; }, [](const NotebookVerdict&) {});
        answer(verdict);
    };
    notebook.add(std::move(request.note), done);
}

} // namespace quorvell
