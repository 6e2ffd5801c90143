// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/SpokenLabel.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>

namespace quorvell {

std::string SpokenLabel::shown(std::string_view label)
{
    // Cut first, so that a label which holds a whole page costs no more than any other. A user-perceived character
    // may be of many code points.
    constexpr std::size_t enoughBytes = longest * 64;
    return trimmed(printableLine(label.substr(0, enoughBytes), longest));
}

std::string SpokenLabel::quoted(std::string_view label)
{
    std::string text = shown(label);
    std::replace(text.begin(), text.end(), '"', '\'');
    return '"' + text + '"';
}

} // namespace quorvell
