// SPDX-License-Identifier: MIT
#include "Quorvell/session/turn/SpokenReply.h"

#include <algorithm>

namespace quorvell {

void SpokenReply::addWords(const std::string& words)
{
    if (!pieces.empty() && pieces.back().start == sound)
        pieces.back().words += words;
    else
        pieces.push_back({words, sound});
}

std::string SpokenReply::text() const
{
    std::string text;
    for (const Piece& piece : pieces)
        text += piece.words;
    return text;
}

std::string SpokenReply::heard(std::chrono::milliseconds played) const
{
    std::string text;
    for (std::size_t index = 0; index < pieces.size(); ++index) {
        const Piece& piece = pieces[index];
        const auto end = index + 1 < pieces.size() ? pieces[index + 1].start : sound;
        if (played <= piece.start || end <= piece.start)
            break;
        if (played >= end) {
            text += piece.words;
            continue;
        }
        // Words are spread over their sound; the one in the middle of which it stopped was not heard.
        const double share =
            static_cast<double>((played - piece.start).count()) / static_cast<double>((end - piece.start).count());
        const auto bytes = static_cast<std::size_t>(share * static_cast<double>(piece.words.size()));
        const std::size_t lastGap = piece.words.rfind(' ', std::min(bytes, piece.words.size()));
        if (lastGap != std::string::npos)
            text += piece.words.substr(0, lastGap);
        break;
    }
    return text;
}

} // namespace quorvell
