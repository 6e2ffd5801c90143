// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Secrets.h"

namespace quorvell {

std::string Secrets::blanked(std::string text) const
{
    for (const std::string& word : words) {
        if (word.size() < shortest || text.find(word) == std::string::npos)
            continue;
        std::string rest;
        std::size_t start = 0;
        for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, start)) {
            rest.append(text, start, at - start).append(inTheirPlace);
            start = at + word.size();
        }
        text = rest.append(text, start);
    }
    return text;
}

} // namespace quorvell
