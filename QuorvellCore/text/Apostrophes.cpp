// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Apostrophes.h"

#include <string_view>

namespace quorvell {

std::string withPlainApostrophes(std::string text)
{
    for (const std::string_view apostrophe : {"\u2018", "\u2019"})
        for (std::size_t at = text.find(apostrophe); at != std::string::npos; at = text.find(apostrophe, at))
            text.replace(at, apostrophe.size(), "'");
    return text;
}

} // namespace quorvell
