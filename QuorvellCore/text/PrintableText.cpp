// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/PrintableText.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

namespace quorvell {

namespace {

bool isControl(unsigned char byte)
{
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
}

/// U+0080 to U+009F, the other control characters, begin with this byte in UTF-8.
bool isSecondControl(unsigned char first, unsigned char second)
{
    return first == 0xC2 && second >= 0x80 && second <= 0x9F;
}

} // namespace

std::string printableText(std::string_view text)
{
    const std::string repaired = repairUtf8(text);
    std::string kept;
    kept.reserve(repaired.size());
    for (std::size_t index = 0; index < repaired.size(); ++index) {
        const auto byte = static_cast<unsigned char>(repaired[index]);
        const auto next = static_cast<unsigned char>(index + 1 < repaired.size() ? repaired[index + 1] : 0);
        if (isSecondControl(byte, next))
            ++index;
        else if (!isControl(byte))
            kept += repaired[index];
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
