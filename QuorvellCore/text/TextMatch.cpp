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

} // namespace

std::string TextMatch::normalized(std::string_view text)
{
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
