// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteFileRules.h"

#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace quorvell {

namespace {

/// Eight bytes at a time, because nearly every note is nothing else and all of them are looked at.
bool isAscii(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t position = 0;
    for (; position + sizeof(std::uint64_t) <= text.size(); position += sizeof(std::uint64_t)) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + position, sizeof(bytes));
        if ((bytes & highBits) != 0)
            return false;
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(position), text.end(),
        [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

/// Repairing what is not UTF-8 and writing it back would destroy a file in another encoding, so it is no note.
bool isUtf8(std::string_view text)
{
    return isAscii(text) || repairUtf8(text) == text;
}

} // namespace

bool isNoteFileName(std::string_view name)
{
    constexpr std::string_view ending = ".md";
    return name.size() > ending.size() && name.ends_with(ending) && !name.starts_with('.') && !name.starts_with('#')
        && !name.starts_with('~');
}

std::optional<Note> noteInFile(std::string_view text, Instant now)
{
    return isUtf8(text) ? NoteFile::decode(text, now) : std::nullopt;
}

} // namespace quorvell
