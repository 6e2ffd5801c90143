// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/history/Transcript.h"

#include "QuorvellCore/text/Characters.h"

#include <utility>

namespace quorvell {

void Transcript::add(std::string_view text, Piece piece)
{
    if (piece == Piece::partial) {
        partial = text;
        return;
    }
    if (std::string words = trimmed(text); !words.empty())
        finished.push_back(std::move(words));
    partial.clear();
}

std::string Transcript::text() const
{
    std::string joined;
    for (const std::string& piece : finished)
        joined += (joined.empty() ? "" : " ") + piece;
    if (!partial.empty())
        joined += (joined.empty() ? "" : " ") + partial;
    return joined;
}

bool Transcript::isEmpty() const
{
    return finished.empty() && partial.empty();
}

} // namespace quorvell
