// SPDX-License-Identifier: MIT
// The notebook folder as it lies on the disk, read without owning it.
#pragma once

#include "QuorvellCore/notebook/Note.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace quorvell {

struct NoteFolderContent {
    std::vector<Note> notes; ///< Newest `created` first, one for each id.
    std::unordered_map<std::string, std::string> fileNames; ///< By id: the file that the note was read from.
    std::vector<std::string> unreadable; ///< Names of files that are no notes, though they are called so.
};

/// The whole of a folder, once. One that was never made is an empty notebook; nothing where it cannot be read.
std::optional<NoteFolderContent> readNoteFolder(const std::string& folder, Instant now);

/// What is told then, as a sentence.
std::string unreadableNoteFolder(const std::string& folder);

} // namespace quorvell
