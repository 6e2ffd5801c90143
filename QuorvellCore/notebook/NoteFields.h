// SPDX-License-Identifier: MIT
// The fields of a note and of what is in it, in their order: the one table that JSON goes by, both ways.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/text/MaybeConst.h"

namespace quorvell {

template <MaybeConst<NoteSource> Record, typename Visitor> void visitFields(Record& source, Visitor& visitor)
{
    visitor.field("app", source.app);
    visitor.field("site", source.site);
    visitor.field("address", source.address);
    visitor.field("title", source.title);
}

template <MaybeConst<NoteTurn> Record, typename Visitor> void visitFields(Record& turn, Visitor& visitor)
{
    visitor.field("question", turn.question);
    visitor.field("answer", turn.answer);
    visitor.field("date", turn.date);
}

template <MaybeConst<Note> Record, typename Visitor> void visitFields(Record& note, Visitor& visitor)
{
    visitor.field("id", note.id);
    visitor.field("kind", note.kind);
    visitor.field("title", note.title);
    visitor.field("body", note.body);
    visitor.field("created", note.created);
    visitor.field("updated", note.updated);
    visitor.field("author", note.author);
    visitor.field("origin", note.origin);
    visitor.field("personEdited", note.personEdited);
    visitor.field("pinned", note.pinned);
    visitor.field("archived", note.archived);
    visitor.field("source", note.source);
    visitor.field("steps", note.steps);
    visitor.field("goal", note.goal);
    visitor.field("question", note.question);
    visitor.field("thread", note.thread);
    visitor.field("confirmed", note.confirmed);
    visitor.field("timesUsed", note.timesUsed);
    visitor.field("checked", note.checked);
    visitor.field("when", note.when);
    visitor.field("remindAt", note.remindAt);
    visitor.field("image", note.image);
    visitor.field("level", note.level);
    visitor.field("reviewed", note.reviewed);
    visitor.field("basedOn", note.basedOn);
    visitor.field("repeatRule", note.repeatRule);
    visitor.field("trigger", note.trigger);
    visitor.field("doneAt", note.doneAt);
    visitor.field("then", note.then);
    visitor.field("event", note.event);
    visitor.field("mirror", note.mirror);
}

} // namespace quorvell
