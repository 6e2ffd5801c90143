// SPDX-License-Identifier: MIT
#include "Quorvell/app/notes/NotesListing.h"

#include "Quorvell/app/conversation/ConversationText.h"
#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/reminders/calendar/ReminderWords.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <vector>

namespace quorvell {

namespace {

/// Filled with spaces to `width` columns of a terminal, or cut to it.
std::string column(const std::string& text, std::size_t width)
{
    const std::string cut = firstColumns(text, width);
    return cut + std::string(width - std::min(columnsOf(cut), width), ' ');
}

std::string writerOf(const Note& note)
{
    const std::string writer = note.author == NoteAuthor::quorvell ? "by the assistant" : "by you";
    return note.personEdited && note.author == NoteAuthor::quorvell ? writer + ", changed by you" : writer;
}

/// "1, 3"
std::string ticks(const Note& note)
{
    std::string text;
    for (const std::int64_t step : note.checked)
        text += (text.empty() ? "" : ", ") + std::to_string(step + 1);
    return text;
}

} // namespace

std::string NotesListing::line(const Note& note) const
{
    constexpr std::size_t idWidth = 12;
    constexpr std::size_t kindWidth = 11;
    constexpr std::size_t longestTitle = 100;
    const std::string title = note.title.empty() ? note.plainText().substr(0, 4 * longestTitle) : note.title;
    return column(printableLine(note.id), idWidth) + "  " + DateParts::fromDay(note.created, calendar).text() + "  "
        + column(std::string(storedText(note.kind)), kindWidth) + "  "
        + firstColumns(printableLine(repairUtf8(title)), longestTitle) + marks(note);
}

std::string NotesListing::page(const Note& note, const std::string& path) const
{
    std::string text = printableLine(note.title) + "\n" + std::string(storedText(note.kind)) + ", "
        + DateParts::from(note.created, calendar).text() + ", " + writerOf(note) + marks(note) + "\n"
        + printableLine(path) + "\n";
    if (note.question)
        text += "\n" + shown(*note.question) + "\n";
    if (const std::string body = note.plainText(); !body.empty())
        text += "\n" + shown(body) + (body.ends_with('\n') ? "" : "\n");
    if (!note.checked.empty())
        text += "\nTicked: " + ticks(note) + "\n";
    for (const NoteTurn& turn : note.thread)
        text += "\n" + shown(turn.question) + "\n\n" + shown(turn.answer) + "\n";
    return text;
}

std::string NotesListing::entry(const NoteVersion& version, std::size_t number) const
{
    constexpr std::size_t longest = 100;
    std::string text = version.body;
    for (const std::string& step : version.steps)
        text += " " + step;
    const std::string line = printableLine(version.title + ": " + text);
    return std::to_string(number) + "  " + DateParts::from(version.date, calendar).text() + "  "
        + firstColumns(line, longest);
}

Json NotesListing::json(const NoteVersion& version, std::size_t number)
{
    return {{"version", number}, {"date", isoText(version.date)}, {"title", version.title}, {"body", version.body},
        {"steps", version.steps}};
}

Json NotesListing::json(const Note& note, const std::string& path)
{
    Json object = {{"id", note.id}, {"kind", std::string(storedText(note.kind))}, {"title", note.title},
        {"created", isoText(note.created)}, {"updated", isoText(note.updated)},
        {"author", std::string(storedText(note.author))}, {"origin", std::string(storedText(note.origin))},
        {"pinned", note.pinned}, {"archived", note.archived}};
    if (note.kind == NoteKind::aboutMe)
        object["confirmed"] = note.confirmed;
    if (note.remindAt)
        object["remind_at"] = isoText(*note.remindAt);
    if (note.repeatRule)
        object["repeat"] = *note.repeatRule;
    if (note.doneAt)
        object["done_at"] = isoText(*note.doneAt);
    object["file"] = path;
    return object;
}

Json NotesListing::jsonWithText(const Note& note, const std::string& path)
{
    Json object = json(note, path);
    object["text"] = note.plainText();
    return object;
}

/// What is special about the note, in brackets; empty when nothing is.
std::string NotesListing::marks(const Note& note) const
{
    std::vector<std::string> found;
    if (note.remindAt && !note.doneAt)
        found.push_back("remind: "
            + ReminderWords::full(*note.remindAt, ReminderWords::Time::isKnown, now, calendar, calendar.locale()));
    if (note.doneAt)
        found.push_back("done");
    if (note.repeatRule && !note.doneAt)
        found.push_back("repeats");
    if (note.pinned)
        found.push_back("pinned");
    if (note.archived)
        found.push_back("archived");
    if (note.kind == NoteKind::aboutMe && !note.confirmed)
        found.push_back("not confirmed");
    std::string text;
    for (const std::string& mark : found)
        text += (text.empty() ? "  [" : ", ") + mark;
    return text.empty() ? "" : text + "]";
}

std::string NotesListing::shown(const std::string& text) const
{
    return output == Output::terminal ? printableText(text) : text;
}

} // namespace quorvell
