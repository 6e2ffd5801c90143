// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Characters.h"

#include "QuorvellCore/text/CharacterBreaks.h"
#include "QuorvellCore/text/CodePoints.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>

namespace quorvell {

namespace {

template <typename Test> std::string trimmedWhere(std::string_view text, const Test& isUnwanted)
{
    std::size_t start = 0;
    for (std::size_t next = 0; start < text.size() && isUnwanted(nextCodePoint(text, next));)
        start = next;
    std::size_t end = text.size();
    for (std::size_t next = end; end > start && isUnwanted(previousCodePoint(text, next));)
        end = next;
    return std::string(text.substr(start, end - start));
}

} // namespace

std::string repairUtf8(std::string_view text)
{
    if (isAscii(text))
        return std::string(text);
    std::string repaired;
    repaired.reserve(text.size());
    for (std::size_t position = 0; position < text.size();) {
        const std::size_t start = position;
        const bool isReplacement = nextCodePoint(text, position) == replacementCodePoint;
        repaired += isReplacement ? std::string_view("\xEF\xBF\xBD") : text.substr(start, position - start);
    }
    return repaired;
}

bool isUtf8(std::string_view text)
{
    return isAscii(text) || repairUtf8(text) == text;
}

std::size_t characterCount(std::string_view text)
{
    std::size_t count = 0;
    for (CharacterBreaks breaks(text); breaks.next();)
        ++count;
    return count;
}

std::string firstCharacters(std::string_view text, std::size_t count)
{
    CharacterBreaks breaks(text);
    std::size_t end = 0;
    for (; count > 0 && breaks.next(); --count)
        end = breaks.end();
    return std::string(text.substr(0, end));
}

std::string trimmed(std::string_view text)
{
    return trimmedWhere(text, isWhiteSpace);
}

std::string trimmed(std::string_view text, std::string_view set)
{
    std::u32string unwanted;
    for (std::size_t position = 0; position < set.size();)
        unwanted += nextCodePoint(set, position);
    return trimmedWhere(text, [&](char32_t codePoint) {
        return isWhiteSpace(codePoint) || unwanted.find(codePoint) != std::u32string::npos;
    });
}

std::string withUpperCaseFirst(std::string_view text)
{
    const std::string first = firstCharacters(text, 1);
    std::string changed;
    icu::StringByteSink<std::string> sink(&changed);
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToUpper("", 0, first, sink, nullptr, status);
    return changed.append(text.substr(first.size()));
}

} // namespace quorvell
