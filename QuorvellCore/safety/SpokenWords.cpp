// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/SpokenWords.h"

#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

namespace quorvell {

std::string spokenWords(std::string_view text)
{
    const std::string lower = lowerCased(text);
    std::string words = " ";
    for (std::size_t position = 0; position < lower.size();) {
        const std::size_t start = position;
        const char32_t letter = nextCodePoint(lower, position);
        const bool isApostrophe = letter == U'\u2018' || letter == U'\u2019';
        const bool isPartOfWord = letter == '\'' || (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z')
            || (letter > 0x7F && !isWhiteSpace(letter) && !(letter >= 0x2010 && letter <= 0x2027) && letter != 0xA0);
        if (isApostrophe)
            words += '\'';
        else if (isPartOfWord)
            words.append(lower, start, position - start);
        else if (words.back() != ' ')
            words += ' ';
    }
    if (words.back() != ' ')
        words += ' ';
    return words;
}

} // namespace quorvell
