// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/PrintableText.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/OneLine.h"

namespace quorvell {

namespace {

bool isControl(unsigned char byte)
{
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
}

/// Not seen themselves, they decide in which order the rest is seen: U+061C, U+200E, U+200F, U+202A to U+202E, U+2066
/// to U+2069. U+2028 and U+2029 break a line where nobody expects it.
bool turnsDirection(char32_t point)
{
    return point == 0x061C || point == 0x200E || point == 0x200F || (point >= 0x2028 && point <= 0x202E)
        || (point >= 0x2066 && point <= 0x2069);
}

bool isShown(char32_t point)
{
    constexpr char32_t lastSecondControl = 0x9F; // They begin at U+0080.
    return point > lastSecondControl && !turnsDirection(point);
}

} // namespace

std::string printableText(std::string_view text)
{
    const std::string repaired = repairUtf8(text);
    std::string kept;
    kept.reserve(repaired.size());
    for (std::size_t index = 0; index < repaired.size();) {
        const auto byte = static_cast<unsigned char>(repaired[index]);
        const std::size_t start = index;
        const char32_t point = nextCodePoint(repaired, index);
        if (byte < 0x80 ? !isControl(byte) : isShown(point))
            kept.append(repaired, start, index - start);
    }
    return kept;
}

std::string printableLine(std::string_view text)
{
    return printableText(onOneLine(text));
}

std::string printableLine(std::string_view text, std::size_t most)
{
    std::string line = printableLine(text);
    return characterCount(line) <= most ? line : firstCharacters(line, most - 1) + "…";
}

} // namespace quorvell
