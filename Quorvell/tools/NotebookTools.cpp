#include "Quorvell/tools/NotebookTools.h"

#include "Quorvell/tools/NoteSearch.h"
#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t maximumTitle = 200; ///< Characters, as all below.
constexpr std::size_t maximumText = 100'000;
constexpr std::size_t maximumTextRead = 20'000;
constexpr std::size_t madeUpTitle = 60;

/// A note to be kept, or what is wrong with the request, worded for the model.
struct NoteRequest {
    Note note;
    std::string problem;
};

/// The first line of the text, at most `madeUpTitle` long and cut between words where it can be.
std::string titleFrom(const std::string& text)
{
    const std::string content = trimmed(text);
    const std::string line = onOneLine(content.substr(0, content.find('\n')));
    std::string title = firstCharacters(line, madeUpTitle);
    const std::size_t lastSpace = title.rfind(' ');
    if (title.size() < line.size() && lastSpace != std::string::npos)
        title.erase(lastSpace);
    return title;
}

std::string tooLong(const char* what, std::size_t length, std::size_t maximum, const char* advice)
{
    return std::string("The ") + what + " has " + std::to_string(length) + " characters; at most "
        + std::to_string(maximum) + " can be kept. " + advice;
}

/// Empty when the request is in order.
std::string problemOf(const std::string& title, const std::string& text, const std::optional<std::string>& kind)
{
    if (title.empty() && trimmed(text).empty())
        return "Nothing was kept: title and text are both missing. Give the words to keep as text.";
    if (kind && kind != storedText(NoteKind::note) && kind != storedText(NoteKind::clip))
        return "Nothing was kept: kind must be \"note\" or \"clip\". Other kinds have tools of their own.";
    if (const std::size_t length = characterCount(title); length > maximumTitle)
        return tooLong("title", length, maximumTitle, "Give a shorter title and put the rest into text.");
    if (const std::size_t length = characterCount(text); length > maximumText)
        return tooLong("text", length, maximumText, "Keep it as several notes.");
    return "";
}

NoteRequest requestedNote(const LiveFunctionCall& call, const NotebookToolContext& context)
{
    const std::string text = repairUtf8(call.string("text").value_or(""));
    const std::string title = onOneLine(repairUtf8(call.string("title").value_or("")));
    const auto kindText = call.string("kind");
    if (std::string problem = problemOf(title, text, kindText); !problem.empty())
        return {{}, std::move(problem)};
    const NoteKind kind = noteKind(kindText.value_or("")).value_or(NoteKind::note);
    const Instant now = context.now();
    return {{.id = context.newID(),
                .kind = kind,
                .title = title.empty() ? titleFrom(text) : title,
                .body = text,
                .created = now,
                .updated = now,
                .author = NoteAuthor::quorvell,
                // A clip is what somebody else wrote, seen on the screen: never to be trusted when it is read again.
                .origin = kind == NoteKind::clip ? NoteOrigin::screen : NoteOrigin::conversation},
        ""};
}

void keepNote(Notebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply)
{
    NoteRequest request = requestedNote(call, context);
    if (!request.problem.empty())
        return reply.fail(request.problem);
    const Json kept = {{"status", "kept"}, {"id", request.note.id}, {"title", request.note.title}};
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    notebook.add(std::move(request.note), [answer, kept](const NotebookVerdict& verdict) {
        if (verdict.isStored)
            answer->answer(kept);
        else
            answer->fail(verdict.problem);
    });
}

/// What both ways of showing a note to the model begin with.
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
    constexpr double usual = 5;
    constexpr double most = 20;
    const double limit = call.number("limit").value_or(usual);
    return static_cast<std::size_t>(std::isnan(limit) ? usual : std::clamp(limit, 1.0, most));
}

void findInNotebook(
    const Notebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply)
{
    const auto query = call.string("query");
    if (!query)
        return reply.fail("query is missing. Give the words to look for, or an empty text for the newest notes.");
    const auto kindText = call.string("kind");
    const auto kind = noteKind(kindText.value_or(""));
    if (kindText && !kind)
        return reply.fail("kind must be one of clip, note, explanation, how_to, about_me.");
    const auto found = searchNotes(notebook.notes(), *query,
        [&kind](const Note& note) { return note.isVisibleToQuorvell() && (!kind || note.kind == *kind); });
    Json shown = Json::array();
    for (const Note* note : found) {
        if (shown.size() == requestedLimit(call))
            break;
        Json entry = described(*note);
        entry["snippet"] = noteSnippet(*note, *query);
        addDates(entry, *note, context);
        shown.push_back(std::move(entry));
    }
    reply.answer({{"status", "found"}, {"count", found.size()}, {"notes", std::move(shown)}});
}

void readNote(
    const Notebook& notebook, const NotebookToolContext& context, const LiveFunctionCall& call, ToolReply reply)
{
    const auto note = notebook.note(call.string("id").value_or(""));
    if (!note || !note->isVisibleToQuorvell())
        return reply.fail("There is no note with that id. Look it up with find_in_notebook and use the id it gives.");
    const std::string text = repairUtf8(note->plainText());
    const std::string start = firstCharacters(text, maximumTextRead);
    Json shown = {{"status", "read"}};
    shown.update(described(*note));
    shown["text"] = start;
    addDates(shown, *note, context);
    if (start.size() < text.size())
        shown["truncated"] = true;
    reply.answer(shown);
}

} // namespace

void registerNotebookTools(ToolRegistry& registry, Notebook& notebook, NotebookToolContext context)
{
    const auto shared = std::make_shared<const NotebookToolContext>(std::move(context));
    registry.add("keep_note", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        keepNote(notebook, *shared, call, std::move(reply));
    });
    registry.add("find_in_notebook", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        findInNotebook(notebook, *shared, call, std::move(reply));
    });
    registry.add("read_note", [&notebook, shared](const LiveFunctionCall& call, ToolReply reply) {
        readNote(notebook, *shared, call, std::move(reply));
    });
}

} // namespace quorvell
