// SPDX-License-Identifier: MIT
// A note that has something in every field, as in tests/fixtures/notebook/everyField.md.
#pragma once

#include "QuorvellCore/notebook/Note.h"

namespace quorvell {

inline constexpr Instant wholeNoteCreated =
    std::chrono::sys_days(std::chrono::year(2026) / 11 / 16) + std::chrono::hours(17) + std::chrono::milliseconds(5);

inline Note wholeNote()
{
    return {.id = "3f2a90bc1d77",
        .kind = NoteKind::aboutMe,
        .title = "Say \"hi\" to A/B",
        .body = "line one\n---\n",
        .created = wholeNoteCreated,
        .updated = wholeNoteCreated + std::chrono::seconds(1),
        .author = NoteAuthor::quorvell,
        .origin = NoteOrigin::web,
        .personEdited = true,
        .pinned = true,
        .archived = true,
        .source = NoteSource{.app = "Firefox", .site = "example.org", .address = "https://example.org/ü", .title = "T"},
        .steps = {"Open", "Save\nall"},
        .goal = "",
        .question = "Why?",
        .thread = {{.question = "q", .answer = "a", .date = wholeNoteCreated}},
        .confirmed = true,
        .timesUsed = 3,
        .checked = {0, -2},
        .when = wholeNoteCreated,
        .remindAt = wholeNoteCreated + std::chrono::hours(24),
        .image = "Pictures/3f2a90bc1d77.png",
        .level = "brief",
        .reviewed = wholeNoteCreated,
        .basedOn = {"aaaaaaaaaaaa"},
        .repeatRule = "weekly:2",
        .trigger = "back_at_mac",
        .doneAt = wholeNoteCreated,
        .then = "then",
        .event = "event",
        .mirror = "mirror"};
}

} // namespace quorvell
