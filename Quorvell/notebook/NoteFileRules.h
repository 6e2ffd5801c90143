// SPDX-License-Identifier: MIT
// Which files of the notebook folder count as notes, and how one is read.
#pragma once

#include "QuorvellCore/notebook/Note.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace quorvell {

/// A note's file may hold this much. A larger one is not read; it stays as it is.
inline constexpr std::size_t maximumNoteBytes = 4 * 1024 * 1024;

/// True for names that end in ".md", except those of hidden and of editors' back-up files.
bool isNoteFileName(std::string_view name);

/// Nothing when the text is no note. `now` becomes `created` where it says none.
std::optional<Note> noteInFile(std::string_view text, Instant now);

} // namespace quorvell
