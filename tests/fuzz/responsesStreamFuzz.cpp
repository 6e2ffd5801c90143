// SPDX-License-Identifier: MIT
// An answer's stream of any bytes, cut anywhere, reads the same; after its end comes nothing. The first byte chooses
// the cut.
#include "QuorvellCore/live/wire/responses/ResponsesStreamParser.h"
#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"
#include "fuzzing.h"

#include <algorithm>

using namespace quorvell;

namespace {

using Events = std::vector<ResponsesStreamEvent>;

struct Reading {
    std::vector<ServerSentEvent> parts;
    Events events;
    bool operator==(const Reading&) const = default;
};

Reading readInPieces(std::string_view stream, std::size_t size)
{
    ServerSentEvents reader;
    ResponsesStreamParser parser;
    Reading all;
    for (; !stream.empty(); stream.remove_prefix(std::min(size, stream.size()))) {
        for (ServerSentEvent& part : reader.add(stream.substr(0, size))) {
            const bool wasEnded = parser.isEnded();
            Events read = parser.read(part.data);
            require(!wasEnded || read.empty());
            std::move(read.begin(), read.end(), std::back_inserter(all.events));
            all.parts.push_back(std::move(part));
        }
    }
    return all;
}

} // namespace

void quorvell::search(std::string_view text)
{
    if (text.empty())
        return;
    const std::string_view stream = text.substr(1);
    const Reading whole = readInPieces(stream, stream.size() + 1);
    require(readInPieces(stream, static_cast<unsigned char>(text[0]) + std::size_t{1}) == whole);
    for (const ServerSentEvent& part : whole.parts) {
        const bool isOneLine = part.data.find_first_of("\r\n") == part.data.npos;
        ServerSentEvents again;
        require(!isOneLine || again.add(ServerSentEvents::text(part)) == std::vector{part});
    }
}
