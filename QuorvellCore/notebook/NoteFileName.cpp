// SPDX-License-Identifier: MIT
// How NoteFile names the file of a note.
#include "QuorvellCore/notebook/NoteFile.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>

namespace quorvell {

namespace {

/// Letters and digits of any script, "-" and "_". The rest, separators and dots above all, could leave the folder.
std::string safeInName(std::string_view text)
{
    std::string safe(text);
    std::replace_if(
        safe.begin(), safe.end(),
        [](char letter) {
            const bool isAlphanumeric = (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z')
                || (letter >= 'A' && letter <= 'Z');
            const bool isAscii = static_cast<unsigned char>(letter) < 0x80;
            return isAscii && !isAlphanumeric && letter != '-' && letter != '_';
        },
        '_');
    return safe;
}

/// The first `count` characters, fewer where they take more than `maximumBytes`: a character may be many bytes.
std::string firstFitting(std::string_view text, std::size_t count, std::size_t maximumBytes)
{
    std::string start = firstCharacters(text, count);
    while (start.size() > maximumBytes)
        start = firstCharacters(start, --count);
    return start;
}

std::string slugOf(const Note& note)
{
    constexpr int maximumWords = 6;
    constexpr std::size_t maximumCharacters = 48;
    constexpr std::size_t maximumBytes = 192; // leaves room for date, both ids, counter and ending in a name's 255
    const std::string words = TextMatch::normalized(note.title);
    std::string slug;
    int count = 0;
    for (std::size_t start = 0; start < words.size() && count < maximumWords;) {
        const std::size_t end = std::min(words.find(' ', start), words.size());
        if (end > start) {
            slug.append(count++ > 0 ? "-" : "").append(words, start, end - start);
        }
        start = end + 1;
    }
    slug = firstFitting(slug, maximumCharacters, maximumBytes);
    return slug.empty() ? std::string(storedText(note.kind)) : slug;
}

std::string stemOf(const Note& note)
{
    constexpr std::size_t dateLength = 10;
    constexpr std::size_t idLength = 4;
    constexpr std::size_t maximumIdBytes = 16;
    return isoText(note.created).substr(0, dateLength) + "-" + slugOf(note) + "-"
        + safeInName(firstFitting(repairUtf8(note.id), idLength, maximumIdBytes));
}

} // namespace

std::string NoteFile::fileName(const Note& note)
{
    return stemOf(note) + ".md";
}

std::string NoteFile::longFileName(const Note& note, int attempt)
{
    constexpr std::size_t maximumIdBytes = 24;
    const std::string id = safeInName(firstFitting(repairUtf8(note.id), maximumIdBytes, maximumIdBytes));
    const std::string counter = attempt > 1 ? "-" + std::to_string(attempt) : "";
    return stemOf(note) + "-" + id + counter + ".md";
}

} // namespace quorvell
