// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteCleaning.h"

#include "QuorvellCore/notebook/LineEnds.h"
#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Characters.h"

#include <string>
#include <vector>

namespace quorvell {

namespace {

void clean(std::string& text)
{
    text = repairUtf8(withLineFeeds(text));
}

void clean(std::optional<std::string>& text)
{
    if (text)
        clean(*text);
}

void clean(std::vector<std::string>& texts)
{
    for (std::string& text : texts)
        clean(text);
}

template <typename... Texts> void cleanAll(Texts&... texts)
{
    (clean(texts), ...);
}

} // namespace

Note cleanedNote(Note note)
{
    cleanAll(note.id, note.title, note.body, note.steps, note.goal, note.question, note.image, note.level, note.basedOn,
        note.repeatRule, note.trigger, note.then, note.event, note.mirror);
    if (note.source)
        cleanAll(note.source->app, note.source->site, note.source->address, note.source->title);
    for (NoteTurn& turn : note.thread)
        cleanAll(turn.question, turn.answer);
    return NoteFile::decode(NoteFile::encode(note), note.created).value_or(note);
}

} // namespace quorvell
