// SPDX-License-Identifier: MIT
// What sorts of notes the notebook holds.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace quorvell {

enum class NoteKind { clip, note, explanation, howTo, aboutMe };

inline constexpr std::array<NoteKind, 5> allNoteKinds = {
    NoteKind::clip, NoteKind::note, NoteKind::explanation, NoteKind::howTo, NoteKind::aboutMe};

/// "clip", "note", "explanation", "how_to", "about_me".
std::string_view storedText(NoteKind kind);

/// Exactly one of the five stored texts, else nothing.
std::optional<NoteKind> noteKind(std::string_view stored);

} // namespace quorvell
