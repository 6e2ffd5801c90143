// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteJson.h"

#include "QuorvellCore/notebook/NoteFields.h"
#include "QuorvellCore/text/RecordJson.h"

namespace quorvell {

namespace {

struct NoteForm {
    static std::string text(Instant value) { return isoText(value); }
    static std::string_view text(NoteKind value) { return storedText(value); }
    static std::string_view text(NoteAuthor value) { return storedText(value); }
    static std::string_view text(NoteOrigin value) { return storedText(value); }

    static std::optional<Instant> value(std::string_view text, Instant) { return parseIsoText(text); }
    static std::optional<NoteKind> value(std::string_view text, NoteKind) { return noteKind(text); }
    static std::optional<NoteAuthor> value(std::string_view text, NoteAuthor) { return noteAuthor(text); }
    static std::optional<NoteOrigin> value(std::string_view text, NoteOrigin) { return noteOrigin(text); }
};

} // namespace

Json NoteJson::encode(const Note& note)
{
    return RecordWriter<NoteForm>::object(note);
}

Json NoteJson::encode(const NoteSource& source)
{
    return RecordWriter<NoteForm>::object(source);
}

Json NoteJson::encode(const NoteTurn& turn)
{
    return RecordWriter<NoteForm>::object(turn);
}

std::optional<Note> NoteJson::decode(const Json& object)
{
    return RecordReader<NoteForm>::record<Note>(object);
}

} // namespace quorvell
