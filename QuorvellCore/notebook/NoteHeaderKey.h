// SPDX-License-Identifier: MIT
// The keys of a note file's header, in the order in which they are written.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quorvell {

enum class NoteHeaderKey : std::size_t {
    id,
    kind,
    title,
    created,
    updated,
    author,
    origin,
    personEdited,
    pinned,
    archived,
    confirmed,
    timesUsed,
    source,
    question,
    goal,
    steps,
    thread,
    checked,
    when,
    remindAt,
    image,
    level,
    reviewed,
    basedOn,
    repeat,
    trigger,
    doneAt,
    then,
    event,
    mirror,
};

/// As the files spell them.
inline constexpr std::array<std::string_view, 30> noteHeaderKeys = {"id", "kind", "title", "created", "updated",
    "author", "origin", "person_edited", "pinned", "archived", "confirmed", "times_used", "source", "question", "goal",
    "steps", "thread", "checked", "when", "remind_at", "image", "level", "reviewed", "based_on", "repeat", "trigger",
    "done_at", "then", "event", "mirror"};

static_assert(noteHeaderKeys.size() == static_cast<std::size_t>(NoteHeaderKey::mirror) + 1);

constexpr std::string_view storedText(NoteHeaderKey key)
{
    return noteHeaderKeys[static_cast<std::size_t>(key)];
}

} // namespace quorvell
