// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteKind.h"

namespace quorvell {

std::string_view storedText(NoteKind kind)
{
    switch (kind) {
    case NoteKind::clip:
        return "clip";
    case NoteKind::note:
        return "note";
    case NoteKind::explanation:
        return "explanation";
    case NoteKind::howTo:
        return "how_to";
    case NoteKind::aboutMe:
        return "about_me";
    }
    return "note";
}

std::optional<NoteKind> noteKind(std::string_view stored)
{
    for (const NoteKind kind : allNoteKinds)
        if (storedText(kind) == stored)
            return kind;
    return std::nullopt;
}

} // namespace quorvell
