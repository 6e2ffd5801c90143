// SPDX-License-Identifier: MIT
// Any bytes are frames, the beginning of one, or refused for good; never a crash. How they are cut changes nothing, and
// no message is longer than the bound.
#include "QuorvellCore/live/wire/transport/WebSocketReader.h"
#include "fuzzing.h"

void quorvell::search(std::string_view text)
{
    constexpr std::size_t longest = 300;
    for (const auto from : {WebSocketReader::From::client, WebSocketReader::From::server}) {
        WebSocketReader atOnce(from, longest), cut(from, longest);
        const auto pieces = atOnce.add(text);
        std::vector<WebSocketReader::Piece> cutPieces;
        for (const char letter : text)
            for (auto& piece : cut.add({&letter, 1}))
                cutPieces.push_back(std::move(piece));
        require(pieces == cutPieces && atOnce.problem() == cut.problem());
        for (const auto& piece : pieces)
            require(piece.payload.size() <= longest && piece.kind != WebSocketFrame::Kind::continuation);
    }
}
