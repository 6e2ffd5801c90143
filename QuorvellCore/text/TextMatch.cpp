// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/TextMatch.h"

#include "QuorvellCore/text/CharacterBreaks.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <unicode/uchar.h>

namespace quorvell {

namespace {

/// Judged by the first code point, so that an accent written behind its letter stays with it.
bool isKept(std::string_view character)
{
    if (character == "'")
        return true;
    std::size_t position = 0;
    const auto first = static_cast<UChar32>(nextCodePoint(character, position));
    return u_isUAlphabetic(first) || u_getIntPropertyValue(first, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

/// Most texts are plain ASCII, where a character is a byte.
std::string normalizedAscii(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    bool needsSpace = false;
    for (char letter : text) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter + ('a' - 'A'));
        if ((letter < 'a' || letter > 'z') && (letter < '0' || letter > '9') && letter != '\'') {
            needsSpace = !result.empty();
            continue;
        }
        if (needsSpace)
            result += ' ';
        needsSpace = false;
        result += letter;
    }
    return result;
}

} // namespace

std::string TextMatch::normalized(std::string_view text)
{
    if (isAscii(text))
        return normalizedAscii(text);
    const std::string lower = lowerCased(repairUtf8(text));
    std::string result;
    result.reserve(lower.size());
    bool needsSpace = false;
    for (CharacterBreaks breaks(lower); breaks.next();) {
        if (!isKept(breaks.character())) {
            needsSpace = !result.empty();
            continue;
        }
        if (needsSpace)
            result += ' ';
        needsSpace = false;
        result += breaks.character();
    }
    return result;
}

} // namespace quorvell
