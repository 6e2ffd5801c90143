// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/history/TypedMessage.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>

namespace quorvell {

std::string TypedMessage::text() const
{
    std::string joined;
    for (const Piece& piece : pieces)
        joined += piece.text;
    return joined;
}

bool TypedMessage::hasPaste() const
{
    return std::any_of(pieces.begin(), pieces.end(), [](const Piece& piece) { return piece.pasted; });
}

bool TypedMessage::isEmpty() const
{
    return trimmed(text()).empty();
}

} // namespace quorvell
