// SPDX-License-Identifier: MIT
// What a speech service sends, cut anywhere, reads the same, and what was read can be sent. The first byte chooses the
// cut.
#include "Wyoming/WyomingAddress.h"
#include "Wyoming/WyomingReader.h"
#include "fuzzing.h"

#include <algorithm>

using namespace quorvell;

namespace {

struct Reading {
    std::vector<WyomingEvent> events;
    bool isBroken = false;
    bool operator==(const Reading&) const = default;
};

Reading readInPieces(std::string_view sent, std::size_t size)
{
    WyomingReader reader;
    Reading all;
    for (; !sent.empty(); sent.remove_prefix(std::min(size, sent.size()))) {
        reader.add(sent.substr(0, size));
        while (auto event = reader.next())
            all.events.push_back(*std::move(event));
    }
    all.isBroken = reader.isBroken();
    return all;
}

} // namespace

void quorvell::search(std::string_view text)
{
    if (text.empty())
        return;
    const std::string_view sent = text.substr(1);
    const Reading whole = readInPieces(sent, sent.size() + 1);
    require(readInPieces(sent, static_cast<unsigned char>(text[0]) + std::size_t{1}) == whole);
    for (const WyomingEvent& event : whole.events) {
        const Reading again = readInPieces(event.bytes(), 1000);
        require(again.events.size() == 1 && again.events.front().payload == event.payload);
    }
    if (const auto address = WyomingAddress::parse(sent))
        require(address->port != 0 && !address->host.empty());
}
