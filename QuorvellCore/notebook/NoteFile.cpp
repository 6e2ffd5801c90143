// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteFile.h"

#include "QuorvellCore/notebook/LineEnds.h"
#include "QuorvellCore/notebook/NoteHeaderReader.h"
#include "QuorvellCore/notebook/NoteHeaderWriter.h"
#include "QuorvellCore/notebook/NoteJson.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quorvell {

namespace {

using Key = NoteHeaderKey;

constexpr std::string_view fence = "---";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

Json threadJson(const std::vector<NoteTurn>& thread)
{
    Json turns = Json::array();
    for (const NoteTurn& turn : thread)
        turns.push_back(NoteJson::encode(turn));
    return turns;
}

void writeHeader(NoteHeaderWriter& header, const Note& note)
{
    header.write(Key::id, note.id);
    header.write(Key::kind, storedText(note.kind));
    header.write(Key::title, note.title);
    header.write(Key::created, note.created);
    header.write(Key::updated, note.updated);
    header.write(Key::author, storedText(note.author));
    header.write(Key::origin, storedText(note.origin));
    header.writeIfTrue(Key::personEdited, note.personEdited);
    header.writeIfTrue(Key::pinned, note.pinned);
    header.writeIfTrue(Key::archived, note.archived);
    if (note.kind == NoteKind::aboutMe)
        header.writeJson(Key::confirmed, Json(note.confirmed));
    if (note.timesUsed >= 1)
        header.writeJson(Key::timesUsed, Json(note.timesUsed));
    if (note.source)
        header.writeJson(Key::source, NoteJson::encode(*note.source));
    header.write(Key::question, note.question);
    header.write(Key::goal, note.goal);
    header.write(Key::steps, note.steps);
    if (!note.thread.empty())
        header.writeJson(Key::thread, threadJson(note.thread));
    header.write(Key::checked, note.checked);
    header.write(Key::when, note.when);
    header.write(Key::remindAt, note.remindAt);
    header.write(Key::image, note.image);
    header.write(Key::level, note.level);
    header.write(Key::reviewed, note.reviewed);
    header.write(Key::basedOn, note.basedOn);
    header.write(Key::repeat, note.repeatRule);
    header.write(Key::trigger, note.trigger);
    header.write(Key::doneAt, note.doneAt);
    header.write(Key::then, note.then);
    header.write(Key::event, note.event);
    header.write(Key::mirror, note.mirror);
}

/// Takes the next line off the front of `rest`, without its line feed. Nothing when no line is left; the text after
/// the last line feed is a line too.
std::optional<std::string_view> takeLine(std::optional<std::string_view>& rest)
{
    if (!rest)
        return std::nullopt;
    const std::size_t end = rest->find('\n');
    const std::string_view line = rest->substr(0, end);
    rest = end == std::string_view::npos ? std::nullopt : std::optional(rest->substr(end + 1));
    return line;
}

/// The body as stored: what follows the closing fence, without the line feed that encoding adds. A carriage return at
/// its very end is the half of a line end that was cut off.
std::string bodyOf(std::string_view rest)
{
    if (rest.ends_with('\n'))
        rest.remove_suffix(1);
    while (rest.ends_with('\r'))
        rest.remove_suffix(1);
    return std::string(rest);
}

std::optional<NoteSource> readSource(const NoteHeaderReader& header)
{
    const auto object = header.value(Key::source);
    if (!object || !object->is_object())
        return std::nullopt;
    return NoteSource{.app = readString(*object, "app"),
        .site = readString(*object, "site"),
        .address = readString(*object, "address"),
        .title = readString(*object, "title")};
}

std::optional<Instant> dateOf(const Json& turn)
{
    const auto text = readString(turn, "date");
    return text ? parseIsoText(*text) : std::nullopt;
}

/// A turn without a readable date takes the note's, so that no answer is lost over it.
std::vector<NoteTurn> readThread(const NoteHeaderReader& header, Instant created)
{
    const auto list = header.value(Key::thread);
    std::vector<NoteTurn> thread;
    if (!list || !list->is_array())
        return thread;
    for (const Json& turn : *list) {
        if (!turn.is_object())
            continue;
        thread.push_back({.question = readString(turn, "question").value_or(""),
            .answer = readString(turn, "answer").value_or(""),
            .date = dateOf(turn).value_or(created)});
    }
    return thread;
}

/// Only pictures inside the notebook folder.
std::optional<std::string> readImage(const NoteHeaderReader& header)
{
    auto image = header.text(Key::image);
    if (image && (image->find("..") != std::string::npos || image->starts_with('/')))
        return std::nullopt;
    return image;
}

/// Always a note; made where it is wanted, because it is large to move.
std::optional<Note> noteOf(
    const NoteHeaderReader& header, std::string id, NoteKind kind, std::string_view body, Instant now)
{
    std::optional<Note> made(std::in_place);
    Note& note = *made;
    note.id = std::move(id);
    note.kind = kind;
    note.body = bodyOf(body);
    note.title = header.text(Key::title).value_or("");
    note.created = header.instant(Key::created).value_or(now);
    note.updated = header.instant(Key::updated).value_or(note.created);
    note.author = noteAuthorFromStored(header.text(Key::author).value_or("")).value_or(NoteAuthor::person);
    note.origin = noteOrigin(header.text(Key::origin).value_or("")).value_or(NoteOrigin::person);
    note.personEdited = header.flag(Key::personEdited);
    note.pinned = header.flag(Key::pinned);
    note.archived = header.flag(Key::archived);
    note.confirmed = kind == NoteKind::aboutMe && header.flag(Key::confirmed);
    note.timesUsed = std::max<std::int64_t>(header.integer(Key::timesUsed).value_or(0), 0);
    note.source = readSource(header);
    note.question = header.text(Key::question);
    note.goal = header.text(Key::goal);
    note.steps = header.texts(Key::steps);
    note.thread = readThread(header, note.created);
    note.checked = header.integers(Key::checked);
    note.when = header.instant(Key::when);
    note.remindAt = header.instant(Key::remindAt);
    note.image = readImage(header);
    note.level = header.text(Key::level);
    note.reviewed = header.instant(Key::reviewed);
    note.basedOn = header.texts(Key::basedOn);
    note.repeatRule = header.text(Key::repeat);
    note.trigger = header.text(Key::trigger);
    note.doneAt = header.instant(Key::doneAt);
    note.then = header.text(Key::then);
    note.event = header.text(Key::event);
    note.mirror = header.text(Key::mirror);
    return made;
}

} // namespace

std::string NoteFile::encode(const Note& note)
{
    std::string text(fence);
    text += '\n';
    NoteHeaderWriter header(text);
    writeHeader(header, note);
    return text.append(fence).append("\n").append(note.body).append("\n");
}

std::optional<Note> NoteFile::decode(std::string_view text, Instant now)
{
    const std::string mended = text.find('\r') == std::string_view::npos ? std::string() : withLineFeeds(text);
    std::optional<std::string_view> rest = mended.empty() ? text : std::string_view(mended);
    if (rest->starts_with(byteOrderMark))
        rest->remove_prefix(byteOrderMark.size());
    if (takeLine(rest) != fence)
        return std::nullopt;
    NoteHeaderReader header;
    auto line = takeLine(rest);
    for (; line && line != fence; line = takeLine(rest))
        header.readLine(*line);
    auto id = header.text(Key::id);
    const auto kind = noteKind(header.text(Key::kind).value_or(""));
    if (!line || !id || !kind)
        return std::nullopt;
    return noteOf(header, std::move(*id), *kind, rest.value_or(""), now);
}

} // namespace quorvell
