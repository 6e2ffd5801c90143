// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/LineEnds.h"

namespace quorvell {

std::string withLineFeeds(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    std::size_t pending = 0; // carriage returns that may yet turn out to belong to a line end
    for (const char letter : text) {
        if (letter == '\r') {
            ++pending;
            continue;
        }
        if (letter != '\n')
            result.append(pending, '\r');
        pending = 0;
        result += letter;
    }
    return result.append(pending, '\r');
}

} // namespace quorvell
