// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/NotebookTools.h"

#include "Quorvell/tools/notebook/FactTool.h"
#include "Quorvell/tools/notebook/ListKeeping.h"
#include "Quorvell/tools/notebook/NoteKeepingTools.h"
#include "Quorvell/tools/notebook/NoteUse.h"
#include "QuorvellCore/notebook/ListNote.h"
#include "QuorvellCore/notebook/answers/AnswerSentences.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t maximumTextRead = 20'000; ///< Characters.
constexpr const char* noSuchNote =
    "There is no note with that id. Look it up with find_in_notebook and use the id it gives.";

/// What every way of showing a note to the model begins with.
Json described(const Note& note)
{
    return {{"id", note.id}, {"kind", std::string(storedText(note.kind))}, {"title", note.title}};
}

std::string dateText(Instant instant, const Calendar& calendar)
{
    return DateParts::from(instant, calendar).text();
}

void addDates(Json& shown, const Note& note, const NotebookToolContext& context)
{
    shown["created"] = dateText(note.created, context.calendar);
    if (note.remindAt)
        shown["remind_at"] = dateText(*note.remindAt, context.calendar);
    if (isUntrusted(note.origin))
        shown["untrusted"] = true;
}

std::size_t requestedLimit(const LiveFunctionCall& call)
{
    constexpr double usual = 10;
    constexpr double most = 50;
    const double limit = call.number("limit").value_or(usual);
    return static_cast<std::size_t>(std::isnan(limit) ? usual : std::clamp(limit, 1.0, most));
}

/// A hit may be older than the notebook; what the model may not see is left out once more.
Json shownHits(const FullNotebook& notebook, const NotebookToolContext& context, const NotesFound& found)
{
    Json shown = Json::array();
    for (const NoteHit& hit : found.hits) {
        const auto note = notebook.note(hit.id);
        if (!note || !note->isVisibleToQuorvell())
            continue;
        Json entry = described(*note);
        entry["snippet"] = hit.snippet;
        if (ListNote::isList(*note))
            entry["list"] = true;
        addDates(entry, *note, context);
        shown.push_back(std::move(entry));
    }
    return shown;
}

/// Notes of the hits that the model may see, in their order.
std::vector<Note> notesOf(const FullNotebook& notebook, const NotesFound& found)
{
    std::vector<Note> notes;
    for (const NoteHit& hit : found.hits) {
        if (auto note = notebook.note(hit.id); note && note->isVisibleToQuorvell())
            notes.push_back(*std::move(note));
    }
    return notes;
}

Json shownSentences(
    const std::vector<Note>& notes, const std::vector<AnswerSentence>& sentences, const NotebookToolContext& context)
{
    Json shown = Json::array();
    for (const AnswerSentence& sentence : sentences) {
        const Note& note = notes[sentence.note];
        Json entry = described(note);
        entry["text"] = sentence.text;
        addDates(entry, note, context);
        shown.push_back(std::move(entry));
    }
    return shown;
}

Json shownNear(const std::vector<Note>& notes, const std::vector<std::size_t>& near, const NotebookToolContext& context)
{
    Json shown = Json::array();
    for (const std::size_t number : near) {
        Json entry = described(notes[number]);
        if (ListNote::isList(notes[number]))
            entry["list"] = true;
        addDates(entry, notes[number], context);
        shown.push_back(std::move(entry));
    }
    return shown;
}

/// What was ticked off or put away long ago may still be asked for; what the model may not see is not.
void answerFromNotebook(const FullNotebook& notebook, const std::shared_ptr<const NotebookToolContext>& context,
    const std::string& asked, std::optional<NoteKind> kind, ToolReply reply)
{
    const auto question = QuestionWords::of(asked);
    if (question.phrases.empty())
        return reply.answer(
            ToolResult(ToolStatus::found).add("count", 0).add("sentences", Json::array()).add("notes", Json::array()));
    constexpr std::size_t lookedThrough = 40; // notes; the best ones hold most of the words
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    context->search->find(
        {.words = {}, .anyOf = question.phrases, .kind = kind, .limit = lookedThrough, .withSnippets = false},
        [&notebook, context, question, answer](const NotesFound& found) {
            const auto notes = notesOf(notebook, found);
            const AnswersFound answers = AnswerSentences::find(question, notes);
            answer->answer(ToolResult(ToolStatus::found)
                               .add("count", answers.sentences.size())
                               .add("sentences", shownSentences(notes, answers.sentences, *context))
                               .add("notes", shownNear(notes, answers.near, *context)));
        });
}

void findInNotebook(const FullNotebook& notebook, const std::shared_ptr<const NotebookToolContext>& context,
    const LiveFunctionCall& call, ToolReply reply)
{
    const auto query = call.string("query");
    if (!query)
        return reply.fail("query is missing. Give the words to look for, or an empty text for the newest notes.");
    const auto kindText = call.string("kind");
    const auto kind = noteKind(kindText.value_or(""));
    if (kindText && !kind)
        return reply.fail("kind must be one of clip, note, explanation, how_to, about_me.");
    if (!context->search)
        return reply.fail("The notebook cannot be searched just now. Tell the user so.");
    if (const std::string question = call.string("question").value_or(""); !question.empty())
        return answerFromNotebook(notebook, context, question, kind, std::move(reply));
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    context->search->find({.words = *query, .kind = kind, .limit = requestedLimit(call)},
        [&notebook, context, answer](const NotesFound& found) {
            answer->answer(ToolResult(ToolStatus::found)
                               .add("count", found.count)
                               .add("notes", shownHits(notebook, *context, found)));
        });
}

Json shownThread(const std::vector<NoteTurn>& thread)
{
    Json turns = Json::array();
    for (const NoteTurn& turn : thread)
        turns.push_back({{"question", turn.question}, {"answer", turn.answer}});
    return turns;
}

void readNote(const FullNotebook& notebook, NoteUse& use, const NotebookToolContext& context,
    const LiveFunctionCall& call, ToolReply reply)
{
    const auto note = notebook.note(call.string("id").value_or(""));
    if (!note || !note->isVisibleToQuorvell())
        return reply.fail(noSuchNote);
    const std::string text = repairUtf8(note->plainText());
    const std::string start = firstCharacters(text, maximumTextRead);
    Json shown = described(*note);
    shown["text"] = start;
    addItems(shown, *note);
    addDates(shown, *note, context);
    if (note->question)
        shown["question"] = *note->question;
    if (note->goal)
        shown["goal"] = *note->goal;
    if (!note->thread.empty())
        shown["thread"] = shownThread(note->thread);
    if (start.size() < text.size())
        shown["truncated"] = true;
    reply.answer(ToolResult(ToolStatus::read).addAll(shown));
    use.used(*note);
}

void openNotebook(
    FullNotebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply)
{
    const std::string id = call.string("id").value_or("");
    const auto note = notebook.note(id);
    const auto path = id.empty() ? std::optional(notebook.folder()) : notebook.fileURL(id);
    if (!path || (!id.empty() && (!note || !note->isVisibleToQuorvell())))
        return reply.fail(noSuchNote);
    if (!context.show)
        return reply.fail("There is no screen to show the notebook on here.");
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    context.show(*path, [&notebook, answer, note](const std::string& problem) {
        if (!problem.empty())
            return answer->fail(problem);
        ToolResult shown(ToolStatus::shown);
        if (note) {
            notebook.flash(note->id);
            shown.add("id", note->id).add("title", note->title);
        }
        answer->answer(shown);
    });
}

} // namespace

void registerNotebookTools(ToolRegistry& registry, FullNotebook& notebook, NotebookToolContext context)
{
    const auto shared = std::make_shared<const NotebookToolContext>(std::move(context));
    const auto facts = std::make_shared<FactTool>(notebook, *shared);
    const auto use = std::make_shared<NoteUse>(notebook, shared->now);
    registry.add("keep_note", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        keepNote(notebook, *shared, call, std::move(reply));
    });
    registry.add("find_in_notebook", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        findInNotebook(notebook, shared, call, std::move(reply));
    });
    registry.add("read_note", [&notebook, shared, use](const LiveFunctionCall& call, ToolReply reply) {
        readNote(notebook, *use, *shared, call, std::move(reply));
    });
    registry.add("explain", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        explain(notebook, *shared, call, std::move(reply));
    });
    registry.add("save_how_to", [&notebook, shared, use](const LiveFunctionCall& call, ToolReply reply) {
        saveHowTo(notebook, *use, *shared, call, std::move(reply));
    });
    registry.add("remember_about_them",
        [facts, shared](const LiveFunctionCall& call, ToolReply reply) { facts->call(call, std::move(reply)); });
    registry.add("open_notebook", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        openNotebook(notebook, *shared, call, std::move(reply));
    });
}

} // namespace quorvell
