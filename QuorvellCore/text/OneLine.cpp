// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/OneLine.h"

namespace quorvell {

std::string onOneLine(std::string_view text)
{
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    std::string line;
    bool isBetweenWords = false;
    for (const char letter : text) {
        if (whiteSpace.find(letter) != std::string_view::npos) {
            isBetweenWords = !line.empty();
            continue;
        }
        if (isBetweenWords)
            line += ' ';
        isBetweenWords = false;
        line += letter;
    }
    return line;
}

} // namespace quorvell
