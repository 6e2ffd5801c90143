// SPDX-License-Identifier: MIT
// Who wrote a note.
#pragma once

#include <optional>
#include <string_view>

namespace quorvell {

enum class NoteAuthor {
    quorvell, ///< The assistant.
    person,
};

/// "quorvell" or "person".
std::string_view storedText(NoteAuthor author);

/// Exactly the raw value.
std::optional<NoteAuthor> noteAuthor(std::string_view rawValue);

/// As noteAuthor, but "buddy", which files of older builds carry, is the assistant.
std::optional<NoteAuthor> noteAuthorFromStored(std::string_view stored);

} // namespace quorvell
