// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/NoteUndo.h"

#include <memory>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* changedSince = "It was changed since then, so it stays as it is.";
constexpr const char* goneSince = "It is no longer in the notebook.";

/// What keeps a note the one that it was when it was made.
bool saysTheSame(const Note& left, const Note& right)
{
    return left.title == right.title && left.body == right.body && left.steps == right.steps;
}

/// `isDone` is known once the note is stored.
NotebookCallback tellingUndone(
    ToolReply reply, const std::string& what, std::shared_ptr<bool> isDone = std::make_shared<bool>(true))
{
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    return [answer, what, isDone = std::move(isDone)](const NotebookVerdict& verdict) {
        if (verdict.isStored && !*isDone)
            answer->fail(changedSince);
        else if (verdict.isStored)
            answer->answer(ToolResult(ToolStatus::undone).add("what", what));
        else
            answer->fail(verdict.problem);
    };
}

} // namespace

void NoteUndo::ofNew(
    const Note& note, std::string what, ToolResult& result, const std::vector<std::string>& putAway) const
{
    if (!book)
        return;
    result.add("undo", book->add([&store = notebook, note, putAway, what = std::move(what)](ToolReply reply) {
        const auto found = store.note(note.id);
        if (!found)
            return reply.fail(goneSince);
        if (!saysTheSame(*found, note))
            return reply.fail(changedSince);
        for (const std::string& id : putAway)
            store.update(
                id, [](Note& old) { old.archived = false; }, [](const NotebookVerdict&) {});
        store.delete_(note.id, tellingUndone(std::move(reply), what));
    }));
}

void NoteUndo::ofChange(const std::string& id, TakeBack takeBack, std::string what, ToolResult& result) const
{
    if (!book)
        return;
    result.add("undo",
        book->add([&store = notebook, id, takeBack = std::move(takeBack), what = std::move(what)](ToolReply reply) {
            auto found = store.note(id);
            if (!found)
                return reply.fail(goneSince);
            if (!takeBack(*found))
                return reply.fail(changedSince);
            // Another program may have written the note in the meantime.
            const auto isDone = std::make_shared<bool>(true);
            const auto change = [takeBack, isDone](Note& note) { *isDone = takeBack(note); };
            store.update(id, change, tellingUndone(std::move(reply), what, isDone));
        }));
}

void NoteUndo::ofRemoval(const Note& note, std::string what, ToolResult& result) const
{
    if (!book)
        return;
    result.add("undo", book->add([&store = notebook, note, what = std::move(what)](ToolReply reply) {
        if (store.note(note.id))
            return reply.fail("It is in the notebook already.");
        store.add(note, tellingUndone(std::move(reply), what));
    }));
}

} // namespace quorvell
