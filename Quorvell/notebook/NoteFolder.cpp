// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteFolder.h"

#include "Quorvell/notebook/NoteFolderReader.h"
#include "Quorvell/notebook/NoteList.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace quorvell {

std::optional<NoteFolderContent> readNoteFolder(const std::string& folder, Instant now)
{
    std::error_code failure;
    if (!std::filesystem::exists(folder, failure) && !failure)
        return NoteFolderContent{};
    NoteFolderReader reader(folder);
    auto changes = reader.read(now);
    if (!changes)
        return std::nullopt;
    NoteFolderContent content;
    content.fileNames.reserve(changes->changed.size());
    for (const StoredNote& stored : changes->changed)
        content.fileNames.emplace(stored.note.id, stored.file.name);
    content.unreadable = reader.unreadable();
    content.notes = NoteList::sorted(std::move(changes->changed));
    return content;
}

std::string unreadableNoteFolder(const std::string& folder)
{
    return "The notebook in " + folder + " cannot be read. See that it is a folder that you may read.";
}

} // namespace quorvell
