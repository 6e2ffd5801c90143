// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteFileRules.h"

#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Characters.h"

namespace quorvell {

bool isNoteFileName(std::string_view name)
{
    constexpr std::string_view ending = ".md";
    return name.size() > ending.size() && name.ends_with(ending) && !name.starts_with('.') && !name.starts_with('#')
        && !name.starts_with('~');
}

std::optional<Note> noteInFile(std::string_view text, Instant now)
{
    // Repairing what is not UTF-8 and writing it back would destroy a file in another encoding.
    return isUtf8(text) ? NoteFile::decode(text, now) : std::nullopt;
}

} // namespace quorvell
