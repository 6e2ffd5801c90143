// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteOrigin.h"

namespace quorvell {

std::string_view storedText(NoteOrigin origin)
{
    switch (origin) {
    case NoteOrigin::person:
        return "person";
    case NoteOrigin::conversation:
        return "conversation";
    case NoteOrigin::screen:
        return "screen";
    case NoteOrigin::web:
        return "web";
    case NoteOrigin::explainer:
        return "explainer";
    }
    return "person";
}

std::optional<NoteOrigin> noteOrigin(std::string_view stored)
{
    for (const NoteOrigin origin :
        {NoteOrigin::person, NoteOrigin::conversation, NoteOrigin::screen, NoteOrigin::web, NoteOrigin::explainer})
        if (storedText(origin) == stored)
            return origin;
    return std::nullopt;
}

bool isUntrusted(NoteOrigin origin)
{
    return origin == NoteOrigin::screen || origin == NoteOrigin::web;
}

} // namespace quorvell
