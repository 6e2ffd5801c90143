// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/NoteAuthor.h"

namespace quorvell {

std::string_view storedText(NoteAuthor author)
{
    switch (author) {
    case NoteAuthor::quorvell:
        return "quorvell";
    case NoteAuthor::person:
        return "person";
    }
    return "person";
}

std::optional<NoteAuthor> noteAuthor(std::string_view rawValue)
{
    for (const NoteAuthor author : {NoteAuthor::quorvell, NoteAuthor::person})
        if (storedText(author) == rawValue)
            return author;
    return std::nullopt;
}

std::optional<NoteAuthor> noteAuthorFromStored(std::string_view stored)
{
    return noteAuthor(stored == "buddy" ? storedText(NoteAuthor::quorvell) : stored);
}

} // namespace quorvell
