// SPDX-License-Identifier: MIT
// One notebook entry: a clip, a note, an explanation, a how-to or a fact about the user. A reminder is a note with
// remindAt or a trigger.
#pragma once

#include "QuorvellCore/notebook/NoteAuthor.h"
#include "QuorvellCore/notebook/NoteKind.h"
#include "QuorvellCore/notebook/NoteOrigin.h"
#include "QuorvellCore/notebook/NoteSource.h"
#include "QuorvellCore/notebook/NoteTurn.h"
#include "QuorvellCore/text/Instant.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct Note {
    std::string id{}; ///< Of newID for our own notes; any text in files of others.
    NoteKind kind = NoteKind::note;
    std::string title{};
    std::string body{};
    Instant created{};
    Instant updated = created; ///< Last change.
    NoteAuthor author = NoteAuthor::person;
    NoteOrigin origin = NoteOrigin::person;
    bool personEdited = false;
    bool pinned = false;
    bool archived = false; ///< Put away; hidden from the assistant.
    std::optional<NoteSource> source{};
    std::vector<std::string> steps{}; ///< Of a how-to.
    std::optional<std::string> goal{};
    std::optional<std::string> question{}; ///< That an explanation answers.
    std::vector<NoteTurn> thread{}; ///< Oldest first.
    bool confirmed = false; ///< An aboutMe fact that the person has confirmed.
    std::int64_t timesUsed = 0; ///< Conversations in which a how-to was read, or made into a better one.
    std::vector<std::int64_t> checked{}; ///< Indexes of ticked steps.
    std::optional<Instant> when{};
    std::optional<Instant> remindAt{};
    std::optional<std::string> image{}; ///< Path of the picture relative to the notebook folder.
    std::optional<std::string> level{};
    std::optional<Instant> reviewed{}; ///< When it was last read to the person.
    std::vector<std::string> basedOn{}; ///< Ids of the notes this one was built from.
    std::optional<std::string> repeatRule{}; ///< Text form of a ReminderRepeat.
    std::optional<std::string> trigger{}; ///< Text form of a ReminderTrigger.
    std::optional<Instant> doneAt{};
    std::optional<std::string> then{};
    std::optional<std::string> event{}; ///< Id of a linked calendar event.
    std::optional<std::string> mirror{}; ///< Id of a mirrored system reminder.

    /// 12 lower-case hexadecimal characters, the first of a random UUID's text form without its dashes.
    /// `randomBytes` are the UUID's 16 bytes before its version and variant bits are set.
    static std::string newID(const std::array<std::uint8_t, 16>& randomBytes);

    std::string searchText() const; ///< Begins with the title.
    std::string plainText() const;
    bool isVisibleToQuorvell() const;

    bool operator==(const Note&) const = default;
};

} // namespace quorvell
