// SPDX-License-Identifier: MIT
// An answer's stream of any bytes, cut anywhere, reads the same; after its end comes nothing. The first byte chooses
// the cut.
#include "QuorvellCore/live/wire/responses/ResponsesStreamParser.h"
#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

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
            if (wasEnded && !read.empty())
                std::abort();
            std::move(read.begin(), read.end(), std::back_inserter(all.events));
            all.parts.push_back(std::move(part));
        }
    }
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view stream(reinterpret_cast<const char*>(data) + 1, size - 1);
    const Reading whole = readInPieces(stream, stream.size() + 1);
    if (!(readInPieces(stream, std::size_t{data[0]} + 1) == whole))
        std::abort();
    for (const ServerSentEvent& part : whole.parts) {
        const bool isOneLine = part.data.find_first_of("\r\n") == part.data.npos;
        ServerSentEvents again;
        if (isOneLine && again.add(ServerSentEvents::text(part)) != std::vector{part})
            std::abort();
    }
    return 0;
}
