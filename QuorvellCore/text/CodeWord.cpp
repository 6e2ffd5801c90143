// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/CodeWord.h"

#include <algorithm>

namespace quorvell {

std::string codeWord(std::string_view text)
{
    const auto isPart = [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9')
            || letter == '_' || letter == '-' || letter == '.' || letter == ':';
    };
    const bool isCode = text.size() <= longestCodeWord && std::all_of(text.begin(), text.end(), isPart);
    return isCode ? std::string(text) : "other";
}

} // namespace quorvell
